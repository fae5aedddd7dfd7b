// Tokens of a file, against the model: first a byte that says whether "," is one of them, how many
// calls are made, and a byte for each.

#include "input.h"
#include "text/text_model.h"

namespace {

constexpr std::size_t kBlockSize = 8192;
constexpr std::size_t kLongestLine = kBlockSize - 1;  // a longer one ends the process

ParserCall callOf(unsigned byte) {
    ParserCall call;
    call.operation = byte % 16;
    call.stop = "\"\n]a"[byte / 16 % 4];
    call.consumesStop = byte / 64 % 2 != 0;
    return call;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Bytes input(data, size);
    const bool isCommaDelimiter = input.next() % 2 != 0;
    const std::string_view calls = input.next(input.next());
    const std::string text = textAcrossBlocks(input, kBlockSize, 'x');
    if (longestLine(text) > kLongestLine) return 0;
    const MemoryFile file(text);
    ZelTextParser parser(new ZelTextFileReader(SV::String(std::string_view(file.path()))),
                         isCommaDelimiter ? ZelTextParser::kCommaIsDelimiter : 0);
    ModelParser model(text, isCommaDelimiter);
    for (const char call : calls) {
        check(differenceAfter(callOf(static_cast<unsigned char>(call)), parser, model).empty());
    }
    for (bool isMore = true; isMore;) {
        check(differenceAfter({}, parser, model).empty());
        isMore = model.okay || !model.lookAhead.empty();
    }
    return 0;
}
