#include "model/file_scan.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <memory>
#include <string_view>

#include "model/cached_block.h"

namespace zelhost {

namespace {

constexpr std::size_t kBlockSize = std::size_t{1} << 20;
#ifdef _WIN32
constexpr char kReadOnly[] = "rbN";  // child processes do not inherit it
#else
constexpr char kReadOnly[] = "rbe";
#endif
constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";

struct FileCloser {
    void operator()(std::FILE* file) const { std::fclose(file); }
};
using File = std::unique_ptr<std::FILE, FileCloser>;

File openForBlocks(const std::string& fileName) {
    File file(std::fopen(fileName.c_str(), kReadOnly));
    if (file) std::setvbuf(file.get(), nullptr, _IONBF, 0);  // blocks are large: no second copy
    return file;
}

bool isLineEnd(char c) { return c == '\n' || c == '\r'; }

struct ByteClasses {
    bool hasNul;
    bool hasHigh;  // bytes from 0x80 on
};

// Eight bytes at a time: this loop sees every byte of the file.
ByteClasses classify(std::string_view bytes) {
    constexpr std::uint64_t kOnes = 0x0101010101010101u;
    constexpr std::uint64_t kHighs = 0x8080808080808080u;
    std::uint64_t nul = 0;
    std::uint64_t high = 0;
    std::size_t i = 0;
    for (; i + 8 <= bytes.size(); i += 8) {
        std::uint64_t word;
        std::memcpy(&word, bytes.data() + i, 8);
        nul |= (word - kOnes) & ~word;
        high |= word;
    }
    for (; i < bytes.size(); ++i) {
        if (bytes[i] == 0) nul = kHighs;
        high |= static_cast<std::uint64_t>(static_cast<unsigned char>(bytes[i]));
    }
    return {(nul & kHighs) != 0, (high & kHighs) != 0};
}

// Line of the byte at `offset`. The file is read again: only messages ask for it.
std::int64_t lineOfOffset(const std::string& fileName, std::int64_t offset) {
    const File file = openForBlocks(fileName);
    CachedBlock block(kBlockSize);
    std::int64_t line = 1;
    char before = 0;
    while (file && offset > 0) {
        const std::size_t wanted =
            static_cast<std::size_t>(std::min<std::int64_t>(offset, kBlockSize));
        const std::size_t count = std::fread(block.data(), 1, wanted, file.get());
        if (count == 0) break;
        for (std::size_t i = 0; i < count; ++i) {
            if (block[i] == '\r' || (block[i] == '\n' && before != '\r')) ++line;
            before = block[i];
        }
        offset -= static_cast<std::int64_t>(count);
    }
    return line;
}

class Scanner {
public:
    explicit Scanner(const std::string& fileName) : m_fileName(fileName) {}

    FileScan run();

private:
    std::size_t readBlock();
    bool checkBlock(std::string_view block);
    bool checkEncoding(std::string_view block);
    bool checkLineLengths(std::size_t end);
    bool failAt(std::int64_t offset, const char* message);
    bool fail(const char* message);

    const std::string& m_fileName;
    File m_file;
    // The last bytes that were read, in front the part of a line that earlier blocks left over.
    CachedBlock m_bytes{kLongestLine + kBlockSize};
    std::size_t m_lineStarted = 0;  // size of that part
    std::int64_t m_offset = 0;      // of the block in the file
    Utf8Validator m_validator;
    FileScan m_scan;
};

bool Scanner::fail(const char* message) {
    m_scan.problem = FileProblem{0, message};
    return false;
}

bool Scanner::failAt(std::int64_t offset, const char* message) {
    m_scan.problem = FileProblem{lineOfOffset(m_fileName, offset), message};
    return false;
}

std::size_t Scanner::readBlock() {
    return std::fread(m_bytes.data() + m_lineStarted, 1, kBlockSize, m_file.get());
}

// A line is too long when no line end lies in any `kLongestLine` + 1 bytes. Looking for one
// from the far end of that window skips most of the text: lines are much shorter.
bool Scanner::checkLineLengths(std::size_t end) {
    std::size_t line = 0;
    while (end - line > kLongestLine) {
        std::size_t i = line + kLongestLine + 1;
        while (i > line && !isLineEnd(m_bytes[i - 1])) --i;
        if (i == line) {
            const auto started = static_cast<std::int64_t>(m_lineStarted);
            return failAt(m_offset - started + static_cast<std::int64_t>(line),
                          "the line is longer than 8191 bytes");
        }
        line = i;
    }
    std::size_t last = end;
    while (last > line && !isLineEnd(m_bytes[last - 1])) --last;
    m_lineStarted = end - last;
    std::memmove(m_bytes.data(), m_bytes.data() + last, m_lineStarted);
    return true;
}

bool Scanner::checkEncoding(std::string_view block) {
    const ByteClasses classes = classify(block);
    if (classes.hasNul) {
        return failAt(m_offset + static_cast<std::int64_t>(block.find('\0')),
                      "a NUL byte: this is not a text file");
    }
    const bool isUndecided = m_scan.encoding == Encoding::utf8;
    if (isUndecided && (classes.hasHigh || m_validator.isInCharacter()) &&
        !m_validator.accept(block)) {
        m_scan.encoding = Encoding::codePage1252;
    }
    return true;
}

bool Scanner::checkBlock(std::string_view block) {
    if (m_offset == 0) {
        if (block.starts_with("\xFF\xFE") || block.starts_with("\xFE\xFF")) {
            return fail("the file is in UTF-16, which is not supported");
        }
        m_scan.hasByteOrderMark = block.starts_with(kUtf8Mark);
    }
    const std::size_t end = m_lineStarted + block.size();
    if (!checkEncoding(block) || !checkLineLengths(end)) return false;
    m_offset += static_cast<std::int64_t>(block.size());
    return true;
}

FileScan Scanner::run() {
    m_file = openForBlocks(m_fileName);
    if (!m_file) {
        fail("the file cannot be opened");
        return m_scan;
    }
    while (const std::size_t count = readBlock()) {
        if (!checkBlock({m_bytes.data() + m_lineStarted, count})) return m_scan;
    }
    if (std::ferror(m_file.get())) {
        fail("the file cannot be read");
    } else if (m_offset == 0) {
        fail("the file is empty");
    }
    m_scan.size = m_offset;
    if (m_validator.isInCharacter()) m_scan.encoding = Encoding::codePage1252;
    if (m_scan.encoding == Encoding::codePage1252) m_scan.hasByteOrderMark = false;
    return m_scan;
}

}  // namespace

FileScan scanTextFile(const std::string& fileName) { return Scanner(fileName).run(); }

}  // namespace zelhost
