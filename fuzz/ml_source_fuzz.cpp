// Sources of multi-language string files: what is read without an error becomes the same source and
// the same file again, and any bytes can be written as a source.

#include "input.h"
#include "zelml/binary.h"
#include "zelml/source.h"

namespace {

bool isSame(const std::vector<SourceText>& a, const std::vector<SourceText>& b) {
    return std::ranges::equal(a, b, [](const SourceText& x, const SourceText& y) {
        return x.id == y.id && x.text == y.text;
    });
}

void checkErrors(const Source& source, std::string_view content) {
    const auto lines = static_cast<std::size_t>(std::ranges::count(content, '\n')) + 1;
    std::size_t last = 1;
    for (const auto& [line, message] : source.errors) {
        check(line >= last && line <= lines && !message.empty());
        last = line;
    }
}

void checkTexts(const std::vector<SourceText>& texts) {
    std::string again;
    for (const auto& [id, text] : texts) {
        check(id > 0 && !text.empty());
        again += sourceLine(id, text) + "\n";
    }
    const Source source = parseSource(again);
    check(source.errors.empty() && isSame(source.texts, texts));
    const FileContent content = readFile(makeFile(texts));
    check(content.faults.empty() && isSame(content.texts, texts));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string content(reinterpret_cast<const char*>(data), size);
    const Source source = parseSource(content);
    checkErrors(source, content);
    if (source.errors.empty()) checkTexts(source.texts);
    if (!content.empty()) checkTexts({{0xFFFF, content}});
    return 0;
}
