#include "diag/plainformat.h"

#include <charconv>
#include <cstring>
#include <string_view>

namespace {

class Formatter {
public:
    explicit Formatter(std::span<char> out) : m_place(out.data()), m_end(m_place + out.size()) {}

    char* place() const { return m_place; }

    bool add(std::string_view text) {
        if (text.size() > static_cast<std::size_t>(m_end - m_place)) return false;
        if (!text.empty()) std::memcpy(m_place, text.data(), text.size());
        m_place += text.size();
        return true;
    }
    template <typename Number>
    bool addNumber(Number number) {
        const auto [end, error] = std::to_chars(m_place, m_end, number);
        m_place = end;
        return error == std::errc();
    }

private:
    char* m_place;
    char* const m_end;
};

// The beginning of a conversion behind its "%", which is cut off.
bool skip(const char*& format, std::string_view text) {
    if (std::strncmp(format, text.data(), text.size()) != 0) return false;
    format += text.size();
    return true;
}

bool addText(Formatter& out, const char* text) { return text && out.add(text); }

bool addCharacter(Formatter& out, int number) {
    const char c = static_cast<char>(number);
    return out.add({&c, 1});
}

}  // namespace

std::optional<std::size_t> formatPlain(std::span<char> out, const char* format, std::va_list args) {
    Formatter result(out);
    const char* const formatEnd = format + std::strlen(format);
    while (true) {
        const std::string_view rest(format, static_cast<std::size_t>(formatEnd - format));
        const std::string_view text = rest.substr(0, rest.find('%'));
        bool isDone = result.add(text);
        format += text.size();
        if (isDone && *format == '\0') return static_cast<std::size_t>(result.place() - out.data());
        ++format;
        if (!isDone) return std::nullopt;
        if (skip(format, "d") || skip(format, "i")) {
            isDone = result.addNumber(va_arg(args, int));
        } else if (skip(format, "s")) {
            isDone = addText(result, va_arg(args, const char*));
        } else if (skip(format, "u")) {
            isDone = result.addNumber(va_arg(args, unsigned));
        } else if (skip(format, "ld") || skip(format, "li")) {
            isDone = result.addNumber(va_arg(args, long));
        } else if (skip(format, "lu")) {
            isDone = result.addNumber(va_arg(args, unsigned long));
        } else if (skip(format, "lld") || skip(format, "lli")) {
            isDone = result.addNumber(va_arg(args, long long));
        } else if (skip(format, "llu") || skip(format, "zu")) {
            static_assert(sizeof(std::size_t) == sizeof(unsigned long long));
            isDone = result.addNumber(va_arg(args, unsigned long long));
        } else if (skip(format, "c")) {
            isDone = addCharacter(result, va_arg(args, int));
        } else {
            isDone = skip(format, "%") && result.add("%");
        }
        if (!isDone) return std::nullopt;
    }
}
