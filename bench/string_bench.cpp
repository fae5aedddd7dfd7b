// SV::String beside std::string: copies, appending, and what programs do with both.

#include <benchmark/benchmark.h>

#include <string>
#include <vector>

#include "sv/string.h"

namespace {

constexpr std::size_t kShort = 12;
constexpr std::size_t kMiddle = 22;  // inline here, on the heap of std::string
constexpr std::size_t kLong = 1000;

template <class Text>
Text textOf(std::size_t size) {
    return Text(size, 'x');
}

template <class Text>
void copy(benchmark::State& state) {
    const Text original = textOf<Text>(static_cast<std::size_t>(state.range(0)));
    for (auto _ : state) {
        Text text(original);
        benchmark::DoNotOptimize(text);
    }
}

template <class Text>
void construct(benchmark::State& state) {
    const std::string original(static_cast<std::size_t>(state.range(0)), 'x');
    for (auto _ : state) {
        Text text(original.data(), original.size());
        benchmark::DoNotOptimize(text);
    }
}

template <class Text>
void appendCharacters(benchmark::State& state) {
    const auto count = static_cast<std::size_t>(state.range(0));
    for (auto _ : state) {
        Text text;
        for (std::size_t i = 0; i < count; ++i) text += static_cast<char>('a' + i % 26);
        benchmark::DoNotOptimize(text);
        if (text.size() != count) state.SkipWithError("wrong length");
    }
}

template <class Text>
void appendPieces(benchmark::State& state) {
    const auto count = static_cast<std::size_t>(state.range(0));
    for (auto _ : state) {
        Text text;
        for (std::size_t i = 0; i < count; ++i) text.append("piece of text", 13);
        benchmark::DoNotOptimize(text);
        if (text.size() != 13 * count) state.SkipWithError("wrong length");
    }
}

template <class Text>
void fillVector(benchmark::State& state) {
    const Text original = textOf<Text>(static_cast<std::size_t>(state.range(0)));
    for (auto _ : state) {
        std::vector<Text> all(100, original);
        benchmark::DoNotOptimize(all);
    }
}

template <class Text>
void compareEqual(benchmark::State& state) {
    const Text a = textOf<Text>(static_cast<std::size_t>(state.range(0)));
    Text b = textOf<Text>(static_cast<std::size_t>(state.range(0)));
    b += 'y';
    Text c = b;
    for (auto _ : state) {
        benchmark::DoNotOptimize(a == b);
        benchmark::DoNotOptimize(c == b);
    }
}

}  // namespace

#define BOTH(work, ...)                                         \
    BENCHMARK(work<SV::String>)->Name(#work "/SV") __VA_ARGS__; \
    BENCHMARK(work<std::string>)->Name(#work "/std") __VA_ARGS__

BOTH(copy, ->Arg(kShort)->Arg(kMiddle)->Arg(kLong));
BOTH(construct, ->Arg(kShort)->Arg(kMiddle)->Arg(kLong));
BOTH(appendCharacters, ->Arg(kShort)->Arg(kMiddle)->Arg(kLong));
BOTH(appendPieces, ->Arg(1)->Arg(10)->Arg(1000));
BOTH(fillVector, ->Arg(kShort)->Arg(kLong));
BOTH(compareEqual, ->Arg(kShort)->Arg(kLong));
