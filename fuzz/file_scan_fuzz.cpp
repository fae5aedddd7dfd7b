// What a scan of a text file finds, against a second look at the bytes. The first byte says whether
// a block of the scan ends within them, which takes a hundred times as long, or one of the reader.

#include "input.h"
#include "model/file_scan.h"
#include "sys/utf8prefix.h"

using zelhost::Encoding;
using zelhost::FileScan;

namespace {

constexpr std::size_t kBlockSize = std::size_t{1} << 20;
constexpr std::size_t kNone = std::string::npos;

bool isUtf16(std::string_view text) {
    return text.starts_with("\xFF\xFE") || text.starts_with("\xFE\xFF");
}

std::int64_t lineAt(std::string_view text, std::size_t offset) {
    std::int64_t line = 1;
    for (std::size_t i = 0; i < offset; ++i) {
        if (text[i] == '\r' || (text[i] == '\n' && (i == 0 || text[i - 1] != '\r'))) ++line;
    }
    return line;
}

// Where the first line begins that is too long.
std::size_t longLine(std::string_view text) {
    std::size_t start = 0;
    while (start < text.size()) {
        const std::size_t end = std::min(text.find_first_of("\r\n", start), text.size());
        if (end - start > zelhost::kLongestLine) return start;
        start = end + 1;
    }
    return kNone;
}

void checkProblem(const FileScan& scan, std::string_view text) {
    const std::int64_t line = scan.problem->line;
    const std::size_t nul = text.find('\0');
    const std::size_t tooLong = longLine(text);
    if (text.empty() || isUtf16(text)) return check(line == 0);
    check((nul != kNone && line == lineAt(text, nul)) ||
          (tooLong != kNone && line == lineAt(text, tooLong)));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Bytes input(data, size);
    const std::string text =
        textAcrossBlocks(input, input.next() % 64 == 1 ? kBlockSize : 8192, 'x');
    const MemoryFile file(text);
    const FileScan scan = zelhost::scanTextFile(file.path());
    const bool isBad = text.empty() || isUtf16(text) || text.find('\0') != kNone ||
                       longestLine(text) > zelhost::kLongestLine;
    check(scan.problem.has_value() == isBad);
    if (isBad) {
        checkProblem(scan, text);
        return 0;
    }
    const bool isUtf8 = utf8Prefix(text).size == text.size();
    check(scan.encoding == (isUtf8 ? Encoding::utf8 : Encoding::codePage1252));
    check(scan.hasByteOrderMark == (isUtf8 && text.starts_with("\xEF\xBB\xBF")));
    check(scan.size == static_cast<std::int64_t>(text.size()));
    return 0;
}
