// What targets share: the bytes of an input, files for readers of files, and how a target says
// that something is wrong.

#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include <sys/mman.h>
#include <unistd.h>

inline void check(bool isGood) {
    if (!isGood) std::abort();
}

// The bytes of an input from the first to the last.
class Bytes {
public:
    Bytes(const std::uint8_t* data, std::size_t size)
        : m_left(reinterpret_cast<const char*>(data), size) {}

    bool isEmpty() const { return m_left.empty(); }
    unsigned next() {  // 0 behind the last
        if (m_left.empty()) return 0;
        const char byte = m_left.front();
        m_left.remove_prefix(1);
        return static_cast<unsigned char>(byte);
    }
    std::string_view next(std::size_t size) {
        const std::string_view bytes = m_left.substr(0, size);
        m_left.remove_prefix(bytes.size());
        return bytes;
    }
    // Up to the first `border`, which is dropped.
    std::string_view until(char border) {
        const std::string_view bytes = m_left.substr(0, m_left.find(border));
        m_left.remove_prefix(std::min(bytes.size() + 1, m_left.size()));
        return bytes;
    }
    std::string_view rest() { return next(m_left.size()); }

private:
    std::string_view m_left;
};

// The rest of the input as the text of a file that is read in blocks of `blockSize`. Unless the
// first byte is 0, as much `filler` stands before it as has the first block end within it; the
// second byte says whether that is one line or several.
inline std::string textAcrossBlocks(Bytes& input, std::size_t blockSize, char filler) {
    constexpr std::size_t kLineSize = 64;
    const std::size_t shown = input.next();
    const bool isOneLine = input.next() % 2 != 0;
    std::string text(shown == 0 ? 0 : blockSize - shown, filler);
    for (std::size_t i = kLineSize - 1; i < text.size() && !isOneLine; i += kLineSize) {
        text[i] = '\n';
    }
    return text.append(input.rest());
}

inline std::size_t longestLine(std::string_view text) {
    std::size_t longest = 0;
    while (!text.empty()) {
        const std::size_t size = std::min(text.find_first_of("\r\n"), text.size());
        longest = std::max(longest, size);
        text.remove_prefix(std::min(size + 1, text.size()));
    }
    return longest;
}

// A file that is nowhere on a disk but has a path to open it by.
class MemoryFile {
public:
    explicit MemoryFile(std::string_view content) : m_file(::memfd_create("input", MFD_CLOEXEC)) {
        check(m_file >= 0);
        check(::write(m_file, content.data(), content.size()) ==
              static_cast<ssize_t>(content.size()));
    }
    MemoryFile(const MemoryFile&) = delete;
    MemoryFile& operator=(const MemoryFile&) = delete;
    ~MemoryFile() { ::close(m_file); }

    std::string path() const { return "/proc/self/fd/" + std::to_string(m_file); }

private:
    const int m_file;
};
