// The readers: blocks of a file, and lines from blocks.

#include <algorithm>
#include <bit>
#include <cstring>

#include "text/bytescan.h"
#include "text/inputfile.h"
#include "zbasic/ztextparser.h"

namespace {

constexpr std::int32_t kBlockSize = 8192;
constexpr std::size_t kTooLong = 8192;  // bytes of a line without its end

constexpr std::ptrdiff_t kStep = 32;      // bytes that a search looks at together
constexpr std::ptrdiff_t kReadable = 64;  // behind the block, for searches here and in the parser

constexpr char kTooLongMessage[] =
    "INTERNAL ERROR!\nThe maximum line length has been exceeded. Max. 8192 characters are allowed "
    "per line! Aborting program.\n";

unsigned lineEndBits(const char* at) {
    const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(at));
    const __m128i hits = _mm_or_si128(isByte(bytes, '\r'), isByte(bytes, '\n'));
    return static_cast<unsigned>(_mm_movemask_epi8(hits));
}

// The first CR or LF, else `end`. `kStep` bytes behind `end` must be readable.
char* findLineEnd(char* begin, char* end) {
    for (char* at = begin; at < end; at += kStep) {
        const std::uint32_t hits = lineEndBits(at) | lineEndBits(at + kStep / 2) << 16;
        if (hits) return std::min(at + std::countr_zero(hits), end);
    }
    return end;
}

}  // namespace

ZelLineReader::~ZelLineReader() = default;

ZelFileReader::ZelFileReader(const SV::String& fileName)
    : m_file(noInputFile()),
      m_fileName(fileName),
      m_buffer(std::make_unique<char[]>(kBlockSize + kReadable)),
      m_position(m_buffer.get()),
      m_end(m_buffer.get()) {}

ZelFileReader::~ZelFileReader() {
    if (isOpen()) closeInputFile(m_file);
}

bool ZelFileReader::Done() {
    if (isOpen()) closeInputFile(m_file);
    m_file = noInputFile();
    return true;
}

std::int64_t ZelFileReader::GetCurrentOffset() const {
    return m_bufferOffset + GetInBufferOffset();
}

bool ZelFileReader::Is2CharsForNewline() const { return m_is2CharsForNewline; }

bool ZelFileReader::_ImpRead() {
    if (m_lastCount >= 1) m_bufferOffset += m_lastCount;
    std::optional<std::int32_t> count;
    if (m_lastCount != 0) count = readInputFile(m_file, m_buffer.get(), kBlockSize);
    if (!count) m_bufferOffset = 0;
    m_lastCount = count.value_or(0);
    m_position = m_buffer.get();
    m_end = m_position + m_lastCount;
    return count.has_value();
}

bool ZelFileReader::MoveTo(std::int64_t offset) {
    if (!seekInputFile(m_file, offset)) return false;
    m_lastCount = -1;
    m_bufferOffset = offset;
    return _ImpRead();
}

double ZelFileReader::GetCurrentPercent() const {
    if (m_fileSize == 0) return 0.0;
    return static_cast<double>(GetCurrentOffset()) / static_cast<double>(m_fileSize) * 100.0;
}

bool ZelFileReader::_ImpOpenFile() {
    Done();
    m_file = openInputFile(m_fileName.c_str());
    if (!isOpen()) return false;
    const auto size = inputFileSize(m_file);
    if (!size) Done();
    m_fileSize = size.value_or(0);
    return size.has_value();
}

bool ZelFileReader::isOpen() const { return m_file != noInputFile(); }

ZelTextFileReader::ZelTextFileReader(const SV::String& fileName) : ZelFileReader(fileName) {}

ZelTextFileReader::~ZelTextFileReader() = default;

bool ZelTextFileReader::Init() {
    m_is2CharsForNewline = false;
    m_lastCount = -1;
    m_bufferOffset = 0;
    return _ImpOpenFile() && _ImpRead();
}

bool ZelTextFileReader::GetLine(SV::String& line) {
    const std::string_view whole = lineInBlock();
    if (whole.empty()) return assembleLine(line);
    line.assign(whole);
    return true;
}

bool ZelTextFileReader::_ImpRead() {
    if (m_borrower) m_borrower->keepLine();
    return ZelFileReader::_ImpRead();
}

// The next line when it lies whole in the block, with its line end and a byte behind that; valid
// until `_ImpRead`. Else nothing is read and the result is empty.
std::string_view ZelTextFileReader::lineInBlock() {
    char* const begin = m_position;
    char* const lineEnd = findLineEnd(begin, m_end);
    if (m_end - lineEnd < 2 || !isOpen()) return {};
    m_is2CharsForNewline = lineEnd[0] == '\r' && lineEnd[1] == '\n';
    // In our own block, where nobody reads it again. Writing what is there already would make the
    // processor wait when these bytes are read as part of a larger piece.
    if (*lineEnd != '\n') *lineEnd = '\n';
    m_position = lineEnd + 1 + m_is2CharsForNewline;
    return {begin, static_cast<std::size_t>(lineEnd + 1 - begin)};
}

// The line that the end of the block cuts, its line end perhaps.
[[gnu::noinline]] bool ZelTextFileReader::assembleLine(SV::String& line) {
    if (!isOpen() || m_lastCount == 0) return false;
    char text[kTooLong];
    std::size_t size = 0;
    for (;;) {
        char* const lineEnd = findLineEnd(m_position, m_end);
        const auto run = static_cast<std::size_t>(lineEnd - m_position);
        // Relied on by callers: an over-long line ends the process.
        if (size + run >= kTooLong) stopProcess(kTooLongMessage);
        std::memcpy(text + size, m_position, run);
        size += run;
        m_position = lineEnd;
        if (lineEnd != m_end) break;
        if (!_ImpRead()) return false;
        if (m_lastCount == 0) break;
    }
    const bool atEndOfFile = m_position == m_end;
    if (atEndOfFile && size == 0) return false;
    skipLineEnd();
    text[size] = '\n';
    line.assign(text, size + 1);
    return true;
}

void ZelTextFileReader::skipLineEnd() {
    m_is2CharsForNewline = false;
    if (m_position == m_end || *m_position++ != '\r') return;
    if (m_position == m_end && !_ImpRead()) return;
    m_is2CharsForNewline = m_position != m_end && *m_position == '\n';
    m_position += m_is2CharsForNewline;
}
