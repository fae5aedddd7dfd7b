#include "model/text_output.h"

#include <charconv>

namespace zelhost {

namespace {

template <typename Number>
void putNumber(TextOutput& output, Number number) {
    char digits[24];
    const auto [end, error] = std::to_chars(digits, digits + sizeof digits, number);
    output << std::string_view(digits, static_cast<std::size_t>(end - digits));
}

}  // namespace

TextOutput& TextOutput::operator<<(std::int64_t number) {
    putNumber(*this, number);
    return *this;
}

TextOutput& TextOutput::operator<<(std::uint64_t number) {
    putNumber(*this, number);
    return *this;
}

TextOutput& TextOutput::indent(std::size_t blanks) {
    m_buffer.append(blanks, ' ');
    return *this;
}

void TextOutput::flush() {
    if (m_isGood && !m_buffer.empty()) m_isGood = m_write(m_buffer);
    m_buffer.clear();
}

bool TextOutput::finish() {
    flush();
    return m_isGood;
}

}  // namespace zelhost
