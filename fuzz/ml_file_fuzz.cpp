// Multi-language string files: the library has the texts that `zelml` finds in them. The first byte
// says whether texts are looked up as well, which takes a hundred times as long.

#include <map>

#include "input.h"
#include "text/mlcontainer.h"
#include "zbasic/zmlstring.h"
#include "zelml/binary.h"

namespace {

constexpr std::uint16_t kLanguage = 1033;
constexpr std::size_t kHeaderSize = 8;

// A file that is made of the texts holds the same; one without a fault is the file that is made.
void checkMade(const FileContent& content, std::string_view file) {
    std::vector<SourceText> texts = content.texts;
    std::erase_if(texts, [](const SourceText& text) { return text.id == 0; });
    const std::string made = makeFile(texts);
    const FileContent again = readFile(made);
    check(again.faults.empty() && again.texts.size() == texts.size());
    for (std::size_t i = 0; i < texts.size(); ++i) {
        check(again.texts[i].id == texts[i].id && again.texts[i].text == texts[i].text);
    }
    if (content.faults.empty()) check(made == file);
}

void checkLookUps(ZelLanguageContainer& container, const std::vector<SourceText>& texts) {
    std::map<std::string_view, std::uint16_t> ids;
    for (const auto& [id, text] : texts) ids[text] = std::max(ids[text], id);
    for (const auto& [text, id] : ids) check(container.findId(text) == id);
    for (const auto& [id, text] : texts) {
        int length = -1;
        check(container.equals(text, id, &length) && length == static_cast<int>(text.size()));
        check(!container.equals(text + "x", id, nullptr));
        check(container.startsWith(text + "x", id, nullptr));
        const int place = container.searchForAny("x" + text, id, nullptr);
        check(place == static_cast<int>(("x" + text).find(text)));
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Bytes input(data, size);
    const bool isLookedUp = input.next() % 16 == 1;
    const std::string bytes(input.rest());
    const FileContent content = readFile(bytes);

    ZelLanguageContainer container;
    MlStringTable& table = container.table(kLanguage);
    const MemoryFile file(bytes);
    std::vector<char> buffer;
    const bool isTaken =
        ZelMLResFileReader(table, SV::String(std::string_view(file.path()))).read(buffer);
    check(isTaken == bytes.starts_with(makeFile({}).substr(0, kHeaderSize)));
    check(table.count() == content.texts.size());
    for (const auto& [id, text] : content.texts) {
        check(std::string_view(container.text(id, kLanguage)) == text);
    }
    if (isTaken) checkMade(content, bytes);
    if (isLookedUp) checkLookUps(container, content.texts);
    return 0;
}
