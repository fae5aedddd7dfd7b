// Lines of a file, from its start and from any offset, as the model reads them. The first bytes say
// how many lines are read before the reader is moved, and to where.

#include "input.h"
#include "text/text_model.h"
#include "zbasic/ztextparser.h"

namespace {

constexpr std::size_t kBlockSize = 8192;
constexpr std::size_t kLongestLine = kBlockSize - 1;  // a longer one ends the process

// False behind the last line.
bool compareLine(ZelTextFileReader& reader, ModelReader& model) {
    SV::String line("untouched");
    std::string expected("untouched");
    const bool isThere = reader.GetLine(line);
    check(isThere == model.getLine(expected));
    check(std::string_view(line) == expected);
    check(reader.Is2CharsForNewline() == model.is2CharsForNewline());
    check(reader.GetCurrentOffset() == model.offset());
    return isThere;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Bytes input(data, size);
    unsigned linesBefore = input.next() % 8;
    const auto offset = static_cast<std::int64_t>(input.next() << 8 | input.next());
    const std::string text = textAcrossBlocks(input, kBlockSize, 'x');
    if (longestLine(text) > kLongestLine) return 0;
    const MemoryFile file(text);
    ZelTextFileReader reader(SV::String(std::string_view(file.path())));
    ModelReader model(text);
    check(reader.Init());
    while (linesBefore-- > 0 && compareLine(reader, model)) {
    }
    check(reader.MoveTo(offset) == model.moveTo(offset));
    while (compareLine(reader, model)) {
    }
    compareLine(reader, model);
    return 0;
}
