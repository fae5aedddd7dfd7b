// Text of a few bytes that is changed in two registers: fields of tables and names mostly are that
// short, and a buffer that bytes are written to one by one cannot be read as a whole at once.

#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

#include "sv/string.h"
#include "text/bytescan.h"

class ShortText {
public:
    static bool takes(std::string_view text) { return text.size() <= kScanStep; }

    explicit ShortText(std::string_view text)
        : m_bytes(readShort(text.data(), text.size())), m_size(text.size()) {}

    std::size_t size() const { return m_size; }
    // How many bytes can be inserted.
    std::size_t room() const { return kScanStep - m_size; }

    // Where candidates are: bit 0 for the first byte.
    template <class Candidates>
    unsigned bitsOf(const Candidates& candidates) const {
        const auto hits =
            static_cast<unsigned>(_mm_movemask_epi8(candidates(inOneRegister(m_bytes))));
        return hits & ((1U << m_size) - 1);
    }

    void insert(std::size_t at, char c) {
        if (at < kHalf) {
            m_bytes.back = m_bytes.back << kByte | m_bytes.front >> (kByte * (kHalf - 1));
            m_bytes.front = withByte(m_bytes.front, at, c);
        } else {
            m_bytes.back = withByte(m_bytes.back, at - kHalf, c);
        }
        ++m_size;
    }

    void erase(std::size_t at) {
        if (at < kHalf) {
            const std::uint64_t next = m_bytes.back << (kByte * (kHalf - 1));
            m_bytes.front = withoutByte(m_bytes.front, at) | next;
            m_bytes.back >>= kByte;
        } else {
            m_bytes.back = withoutByte(m_bytes.back, at - kHalf);
        }
        --m_size;
    }

    SV::String toString() const {
        SV::String text;
        text.resizeAndOverwrite(kScanStep, [this](char* to, std::size_t) {
            std::memcpy(to, &m_bytes, sizeof m_bytes);
            return m_size;
        });
        return text;
    }

private:
    static constexpr unsigned kByte = 8;  // bits
    static constexpr std::size_t kHalf = sizeof(std::uint64_t);

    static std::uint64_t below(std::size_t at) { return (std::uint64_t{1} << (kByte * at)) - 1; }
    static std::uint64_t withByte(std::uint64_t half, std::size_t at, char c) {
        const std::uint64_t inserted = std::uint64_t{static_cast<unsigned char>(c)} << (kByte * at);
        return (half & below(at)) | inserted | (half & ~below(at)) << kByte;
    }
    static std::uint64_t withoutByte(std::uint64_t half, std::size_t at) {
        return (half & below(at)) | (half >> kByte & ~below(at));
    }

    ShortBytes m_bytes;
    std::size_t m_size;
};
