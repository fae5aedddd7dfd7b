// Any text of the code page as SGML and as XML: reading the references again gives the text, less
// what the formats drop.

#include <sstream>

#include "input.h"
#include "model/encoding.h"
#include "sv/codepage1252.h"
#include "zbasic/zsgml.h"

using zelhost::Encoding;

namespace {

bool hasCharacter(char c) {
    return SV::CodePage1252ToCharacter(static_cast<unsigned char>(c)).has_value();
}

bool isInSgml(char c) { return c != '\r'; }

// XML 1.0, section 2.2, and of the control range what the code page has a character for.
bool isInXml(char c, bool checkControlRange) {
    const auto byte = static_cast<unsigned char>(c);
    if (byte < 32) return c == '\t' || c == '\n' || c == '\r';
    return !checkControlRange || (byte != 0x7F && hasCharacter(c));
}

template <class IsKept>
std::string utf8Of(std::string_view text, IsKept isKept) {
    std::string utf8;
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        if (isKept(c)) {
            zelhost::appendUtf8(utf8, SV::CodePage1252ToCharacter(byte).value_or(byte));
        }
    }
    return utf8;
}

std::string decoded(std::string_view text, Encoding encoding) {
    std::string utf8;
    zelhost::decodeEntities(text, encoding, utf8);
    return utf8;
}

// Nothing of the text is taken for markup, inside or outside of a value.
void checkIsData(std::string_view markup) {
    check(markup.find_first_of("<>\"") == std::string_view::npos);
}

template <class Text>
std::string streamed(const Text& text, int width) {
    std::ostringstream stream;
    stream.width(width);
    stream << text;
    return stream.str();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Bytes input(data, size);
    const int width = static_cast<int>(input.next());
    const SV::String text(input.rest());

    const SV::String sgml = ZelSGMLString::GetSGMLString(text);
    checkIsData(sgml);
    check(decoded(sgml, Encoding::codePage1252) == utf8Of(text, isInSgml));
    ZelSGMLString::SetExportFileType(ZelExportFileType(0));
    for (const int each : {0, width}) {
        const bool isPadded = !sgml.empty();
        check(streamed(ZelSGMLString(text), isPadded ? each : 0) ==
              streamed(std::string_view(sgml), isPadded ? each : 0));
    }
    for (const bool checkControlRange : {false, true}) {
        const SV::String xml = ZelSGMLString::XMLStr(text, checkControlRange);
        checkIsData(xml);
        check(decoded(xml, Encoding::utf8) ==
              utf8Of(text, [=](char c) { return isInXml(c, checkControlRange); }));
        if (!checkControlRange) continue;
        ZelSGMLString::SetExportFileType(kExportFileTypeXml);
        check(streamed(ZelSGMLString(text), 0) == std::string_view(xml));
    }
    return 0;
}
