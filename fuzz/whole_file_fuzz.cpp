// Whole files of UTF-8 in the code page, against a decoder that takes one character after the
// other.

#include "input.h"
#include "sv/codepage1252.h"
#include "sys/codepagedecoder.h"
#include "sys/zfileman_sys.h"
#include "zbasic/zfileman.h"
#include "zelml/utf8.h"

namespace {

constexpr std::size_t kBlockSize = std::size_t{64} << 10;

std::string g_message;

// Appends characters up to what is none, and gives how many bytes they are.
std::size_t decode(std::string_view utf8, std::string& text) {
    std::size_t size = 0;
    while (size < utf8.size()) {
        const Decoded decoded = decodeUtf8(utf8.substr(size));
        if (decoded.size == 0) break;
        // The system's routine works in units of UTF-16, of which such a character is two.
        const std::string none(decoded.character > 0xFFFF ? 2 : 1, '?');
        const auto byte = SV::CharacterToCodePage1252(decoded.character);
        text += byte ? std::string(1, *byte) : none;
        size += decoded.size;
    }
    return size;
}

}  // namespace

// What stands here for the system.

CodePageDecoder::CodePageDecoder(std::size_t mostBytes) : m_outSize(mostBytes) {}

void CodePageDecoder::append(SV::String& text, std::string_view utf8) {
    check(utf8.size() <= m_outSize);
    std::string decoded;
    check(decode(utf8, decoded) == utf8.size());
    text += std::string_view(decoded);
}

SV::String lastSystemMessage() { return "no message"; }

ZelSystemFileManager::ReadStringFromFileFct ZelSystemFileManager::pReadStringFromFileFct = nullptr;

void ZelBasicFileManager::_setErrorMessage(const SV::String& text) {
    g_message = std::string_view(text);
}

// First a byte that says whether bytes are kept as they are.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Bytes input(data, size);
    const bool keepsBytes = input.next() % 8 == 1;
    const std::string bytes = textAcrossBlocks(input, kBlockSize, 'x');
    std::string expected;
    const std::size_t decoded = decode(bytes, expected);
    if (bytes.starts_with("\xEF\xBB\xBF")) expected.erase(0, 1);
    const bool isUtf8 = decoded == bytes.size();

    const MemoryFile file(bytes);
    const SV::String path(file.path().c_str());
    SV::String content("untouched");
    const long result = ZelWholeFileReader::Read(content, path, keepsBytes);
    if (keepsBytes || isUtf8) {
        check(result == ZelWholeFileReader::kRead && g_message.empty());
        check(std::string_view(content) == (keepsBytes ? bytes : expected));
        return 0;
    }
    check(result == ZelWholeFileReader::kNotUtf8 && content.empty());
    check(g_message.ends_with(" at byte " + std::to_string(decoded + 1)));
    return 0;
}
