#include <cstring>
#include <memory>
#include <new>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "sys/codepagedecoder.h"
#include "sys/utf8prefix.h"
#include "sys/zfileman_sys.h"
#include "text/inputfile.h"
#include "zbasic/zfileman.h"

namespace {

constexpr std::int64_t kLargestFile = std::int64_t{1} << 31;
constexpr std::size_t kBlockSize = std::size_t{64} << 10;  // stays in the processor's cache
constexpr std::size_t kLongestPart = 3;  // of a character that goes on in the next block
constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

struct Failure {
    ZelWholeFileReader::Result result;
    SV::String message;
};

Failure failureOfSystem(const char* what) {
    return {ZelWholeFileReader::kNotReadable, what + lastSystemMessage()};
}

Failure tooLarge() { return {ZelWholeFileReader::kTooLarge, "is larger than 2 GB"}; }

class WholeFile {
public:
    explicit WholeFile(const SV::String& fileName) : m_file(fileName.c_str()) {}

    std::optional<Failure> read(SV::String& content, bool keepsBytes);

private:
    bool append(SV::String& content, bool keepsBytes, bool isEnd);

    const InputFile m_file;
    // What was read last, in front the part of a character that came before it.
    const std::unique_ptr<char[]> m_block = std::make_unique<char[]>(kLongestPart + kBlockSize);
    std::size_t m_size = 0;
    std::int64_t m_offset = 0;  // of the block in the file
    std::optional<CodePageDecoder> m_decoder;
};

std::optional<Failure> WholeFile::read(SV::String& content, bool keepsBytes) {
    if (!m_file) return failureOfSystem("cannot be opened: ");
    const std::optional<std::int64_t> size = inputFileSize(m_file.get());
    if (!size) return failureOfSystem("cannot be read: ");
    if (*size > kLargestFile) return tooLarge();
    content.reserve(static_cast<std::size_t>(*size));
    for (std::int64_t sum = 0;;) {
        const auto count = readInputFile(m_file.get(), m_block.get() + m_size, kBlockSize);
        if (!count) return failureOfSystem("cannot be read: ");
        sum += *count;
        if (sum > kLargestFile) return tooLarge();  // it has grown meanwhile
        m_size += static_cast<std::size_t>(*count);
        const bool isEnd = *count == 0;
        if (!append(content, keepsBytes, isEnd)) {
            return Failure{ZelWholeFileReader::kNotUtf8,
                           SV::String("is not UTF-8 at byte " + std::to_string(m_offset + 1))};
        }
        if (isEnd) return std::nullopt;
    }
}

// Takes what can be taken of the block. False at `m_offset` where it is not UTF-8.
bool WholeFile::append(SV::String& content, bool keepsBytes, bool isEnd) {
    const std::string_view block(m_block.get(), m_size);
    const Utf8Prefix prefix = keepsBytes ? Utf8Prefix{m_size, true, false} : utf8Prefix(block);
    const std::string_view rest = block.substr(prefix.size);
    std::string_view text = block.substr(0, prefix.size);
    if (prefix.isAscii) {
        content += text;
    } else {
        const bool hasMark = m_offset == 0 && text.starts_with(kByteOrderMark);
        if (hasMark) text.remove_prefix(kByteOrderMark.size());
        if (!m_decoder) m_decoder.emplace(kLongestPart + kBlockSize);
        m_decoder->append(content, text);
    }
    m_offset += static_cast<std::int64_t>(prefix.size);
    if (!rest.empty() && (isEnd || !prefix.isCharacterBegun)) return false;
    std::memmove(m_block.get(), rest.data(), rest.size());
    m_size = rest.size();
    return true;
}

}  // namespace

void ZelWholeFileReader::Install() { pReadStringFromFileFct = &ZelWholeFileReader::Read; }

long ZelWholeFileReader::Read(SV::String& content, const SV::String& fileName, bool keepsBytes) {
    SV::String text;
    std::optional<Failure> failure;
    try {
        failure = WholeFile(fileName).read(text, keepsBytes);
    } catch (const std::bad_alloc&) {
        failure = Failure{kNoMemory, "there is not enough memory for its text"};
    }
    _setErrorMessage(failure ? fileName + ": " + failure->message : SV::String());
    content = failure ? SV::String() : std::move(text);
    return failure ? failure->result : kRead;
}
