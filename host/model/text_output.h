// Buffered output of the writers.

#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

namespace zelhost {

// Takes the next bytes of a file; false when they cannot be written (a full disk).
using WriteChunk = std::function<bool(std::string_view bytes)>;

// Collects text and hands it on in large pieces. After the first failure nothing more is
// handed on.
class TextOutput {
public:
    explicit TextOutput(WriteChunk write) : m_write(std::move(write)) {}

    TextOutput& operator<<(std::string_view text) {
        m_buffer += text;
        if (m_buffer.size() >= kChunkSize) flush();
        return *this;
    }
    TextOutput& operator<<(const char* text) { return *this << std::string_view(text); }
    TextOutput& operator<<(std::int64_t number);
    TextOutput& operator<<(std::uint64_t number);
    TextOutput& operator<<(char c) { return *this << std::string_view(&c, 1); }
    TextOutput& indent(std::size_t blanks);

    // Hands on the rest; false when that or anything before it could not be written.
    bool finish();

private:
    static constexpr std::size_t kChunkSize = std::size_t{1} << 16;

    void flush();

    WriteChunk m_write;
    std::string m_buffer;
    bool m_isGood = true;
};

}  // namespace zelhost
