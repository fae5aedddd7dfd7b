// Lines and tokens of large text files.

#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstring>
#include <fstream>
#include <memory>

#include "sample_text.h"
#include "zbasic/ztextparser.h"

// Of flex_tokens.l.
void flexOpen(std::FILE* file, std::string* token);
bool flexNext();

namespace {

constexpr std::size_t kSize = 50'000'000;

// What was read, so that two readers can be compared.
struct Sum {
    std::size_t count = 0;
    std::size_t bytes = 0;
    std::size_t mix = 0;

    void add(std::string_view text) {
        ++count;
        bytes += text.size();
        if (!text.empty()) {
            mix += static_cast<unsigned char>(text.front()) * text.size() +
                   static_cast<unsigned char>(text.back());
        }
    }
    bool operator==(const Sum&) const = default;
};

Sum parserTokens(const std::string& path) {
    ZelTextParser parser(new ZelTextFileReader(SV::String(path)));
    Sum sum;
    for (SV::String token; parser.GetNextToken(token);) sum.add(token);
    return sum;
}

Sum flexTokens(const std::string& path) {
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(std::fopen(path.c_str(), "rb"),
                                                               std::fclose);
    std::string token;
    flexOpen(file.get(), &token);
    Sum sum;
    while (flexNext()) sum.add(token);
    return sum;
}

// As one would write it first: what is consumed is cut from the front of the line.
Sum cutTokens(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    Sum sum;
    std::string line, spaces, token;
    const auto isWord = [](char c) {
        return std::isalnum(static_cast<unsigned char>(c)) || (c && std::strchr("+-._,", c));
    };
    for (;;) {
        spaces.clear();
        for (;;) {
            while (!line.empty() && std::isspace(static_cast<unsigned char>(line[0]))) {
                spaces += line[0];
                line.erase(0, 1);
            }
            if (!line.empty()) break;
            if (!std::getline(file, line)) return sum;
            line += '\n';
        }
        std::size_t size = 0;
        while (isWord(line[size])) ++size;
        if (size == 0) size = 1;
        token = line.substr(0, size);
        line.erase(0, size);
        sum.add(token);
    }
}

Sum readerLines(const std::string& path) {
    ZelTextFileReader reader{SV::String(path)};
    Sum sum;
    if (!reader.Init()) return sum;
    for (SV::String line; reader.GetLine(line);) {
        sum.add(std::string_view(line).substr(0, line.size() - 1));
    }
    return sum;
}

Sum streamLines(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    Sum sum;
    for (std::string line; std::getline(file, line);) sum.add(line);
    return sum;
}

// Measures `read`, after a look at whether it reads what `other` reads.
void measure(benchmark::State& state, Sum (*read)(const std::string&),
             Sum (*other)(const std::string&)) {
    const std::string& path = sampleFile(static_cast<SampleKind>(state.range(0)), kSize);
    if (read(path) != other(path)) return state.SkipWithError("the results differ");
    for (auto _ : state) benchmark::DoNotOptimize(read(path));
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * kSize));
    state.SetLabel(state.range(0) == 0 ? "model" : "header");
}

BENCHMARK_CAPTURE(measure, tokens_parser, parserTokens, flexTokens)
    ->DenseRange(0, 1)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(measure, tokens_flex, flexTokens, parserTokens)
    ->DenseRange(0, 1)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(measure, tokens_cut, cutTokens, parserTokens)
    ->DenseRange(0, 1)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(measure, lines_reader, readerLines, streamLines)
    ->DenseRange(0, 1)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(measure, lines_getline, streamLines, readerLines)
    ->DenseRange(0, 1)
    ->Unit(benchmark::kMillisecond);

}  // namespace
