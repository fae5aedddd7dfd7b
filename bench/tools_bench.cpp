// Numbers, masking and splitting. The peer that switches locales needs a German one to leave:
// localedef -i de_DE -f UTF-8 DIR/de_DE.UTF-8, then LOCPATH=DIR.

#include <absl/strings/str_split.h>
#include <benchmark/benchmark.h>
#include <fast_float/fast_float.h>

#include <algorithm>
#include <clocale>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <random>
#include <string>
#include <vector>

#include "zbasic/ztools.h"

namespace {

constexpr std::size_t kCount = 1000;
constexpr std::size_t kMebibyte = 1 << 20;

std::string printed(const char* format, int precision, double value) {
    char buffer[400];
    return {buffer, static_cast<std::size_t>(
                        std::snprintf(buffer, sizeof buffer, format, precision, value))};
}

// -- Numbers

enum NumberKind { kPrices, kCoordinates, kAllDigits, kExponents };

double numberOf(NumberKind kind, std::mt19937_64& random) {
    const double unit = static_cast<double>(random()) / 18446744073709551616.0;
    switch (kind) {
        case kPrices:
            return static_cast<double>(random() % 100'000) / 100;
        case kCoordinates:
            return unit * 2000 - 1000;
        default:
            return (unit + 0.1) * std::pow(10, static_cast<int>(random() % 40) - 20);
    }
}

std::string numberText(NumberKind kind, double value) {
    switch (kind) {
        case kPrices:
            return printed("%.*f", 2, value);
        case kCoordinates:
            return printed("%.*f", 6, value);
        case kAllDigits:
            return printed("%.*g", 17, value);
        default:
            return printed("%.*e", 9, value);
    }
}

std::vector<std::string> numberTexts(NumberKind kind) {
    std::mt19937_64 random(1);
    std::vector<std::string> texts(kCount);
    for (std::string& text : texts) text = numberText(kind, numberOf(kind, random));
    return texts;
}

double byFastFloat(const std::string& text) {
    double value = 0;
    fast_float::from_chars(text.data(), text.data() + text.size(), value);
    return value;
}

double bySwitchingLocale(const std::string& text) {
    const std::string before = std::setlocale(LC_NUMERIC, nullptr);
    std::setlocale(LC_NUMERIC, "C");
    const double value = std::strtod(text.c_str(), nullptr);
    std::setlocale(LC_NUMERIC, before.c_str());
    return value;
}

double byUs(const std::string& text) { return zel_atof(text.c_str()); }

void parse(benchmark::State& state, double (*read)(const std::string&)) {
    const auto texts = numberTexts(static_cast<NumberKind>(state.range(0)));
    if (!std::setlocale(LC_NUMERIC, "de_DE.UTF-8")) return state.SkipWithError("no German locale");
    for (const std::string& text : texts) {
        if (read(text) != byFastFloat(text)) return state.SkipWithError("the results differ");
    }
    for (auto _ : state) {
        for (const std::string& text : texts) benchmark::DoNotOptimize(read(text));
    }
    state.SetItemsProcessed(static_cast<std::int64_t>(state.iterations() * kCount));
    std::setlocale(LC_NUMERIC, "C");
}
BENCHMARK_CAPTURE(parse, ours, byUs)->DenseRange(kPrices, kExponents);
BENCHMARK_CAPTURE(parse, fast_float, byFastFloat)->DenseRange(kPrices, kExponents);
BENCHMARK_CAPTURE(parse, strtod_switched, bySwitchingLocale)->DenseRange(kPrices, kExponents);

SV::String withoutZeros(double value, int decimals) { return zel_ftoa_no_locale(value, decimals); }
SV::String withPeriod(double value, int decimals) { return zel_ftoa_period(value, decimals); }
SV::String bySnprintf(double value, int decimals) {
    char buffer[512];
    return {buffer, static_cast<std::size_t>(
                        std::snprintf(buffer, sizeof buffer, "%.*f", decimals, value))};
}

void format(benchmark::State& state, SV::String (*write)(double, int)) {
    const auto kind = static_cast<NumberKind>(state.range(0));
    const auto decimals = static_cast<int>(state.range(1));
    std::mt19937_64 random(1);
    std::vector<double> values(kCount);
    for (double& value : values) value = numberOf(kind, random);
    for (const double value : values) {
        if (!std::string_view(bySnprintf(value, decimals)).starts_with(write(value, decimals))) {
            return state.SkipWithError("the results differ");
        }
    }
    for (auto _ : state) {
        for (const double value : values) benchmark::DoNotOptimize(write(value, decimals));
    }
    state.SetItemsProcessed(static_cast<std::int64_t>(state.iterations() * kCount));
}
void formatArguments(benchmark::internal::Benchmark* work) {
    work->Args({kPrices, 2})->Args({kCoordinates, 6})->Args({kCoordinates, 15});
    work->Args({kExponents, 20});
}
BENCHMARK_CAPTURE(format, no_locale, withoutZeros)->Apply(formatArguments);
BENCHMARK_CAPTURE(format, period, withPeriod)->Apply(formatArguments);
BENCHMARK_CAPTURE(format, snprintf, bySnprintf)->Apply(formatArguments);

// -- Text: a field of 12 bytes or 1 MiB, a special character (";") every so many bytes or none

std::string sampleText(std::size_t size, std::size_t distance) {
    std::mt19937 random(2);
    std::string text(size, '\0');
    for (char& c : text) {
        c = distance && random() % distance == 0 ? ';' : static_cast<char>('a' + random() % 26);
    }
    if (distance && size < distance) text[size / 2] = ';';
    return text;
}

void textArguments(benchmark::internal::Benchmark* work) {
    for (const std::int64_t distance : {0, 6, 20}) {
        work->Args({12, distance})->Args({200, distance});
        work->Args({static_cast<std::int64_t>(kMebibyte), distance});
    }
}

std::string maskedByByte(const std::string& text) {
    std::string masked;
    for (const char c : text) {
        if (c == ';' || c == '\\') masked += '\\';
        masked += c;
    }
    return masked;
}

std::string unmaskedByByte(const std::string& text) {
    std::string unmasked;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '\\') ++i;
        unmasked += text[i];
    }
    return unmasked;
}

std::string csvByByte(const std::string& text) {
    std::string masked;
    bool isQuoted = false;
    for (const char c : text) {
        isQuoted = isQuoted || c == ';' || c == '"';
        if (c == '"') masked += '"';
        masked += c;
    }
    return isQuoted ? '"' + masked + '"' : masked;
}

struct Masking {
    SV::String (*ours)(const SV::String&);
    std::string (*peer)(const std::string&);
    bool takesMasked;
};
const Masking kMaskings[] = {
    {[](const SV::String& text) { return Zel_Mask(text.c_str(), ';', '\\'); }, maskedByByte, false},
    {[](const SV::String& text) { return Zel_Unmask(text.c_str(), '\\'); }, unmaskedByByte, true},
    {[](const SV::String& text) { return Zel_MaskCSV(text); }, csvByByte, false},
};

template <typename Text, typename Function>
void maskBy(benchmark::State& state, const Masking& masking, Function change) {
    std::string text = sampleText(static_cast<std::size_t>(state.range(0)),
                                  static_cast<std::size_t>(state.range(1)));
    if (masking.takesMasked) text = maskedByByte(text);
    if (masking.ours(SV::String(text)) != masking.peer(text)) {
        return state.SkipWithError("the results differ");
    }
    const Text source(text);
    for (auto _ : state) benchmark::DoNotOptimize(change(source));
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * text.size()));
}
void maskOurs(benchmark::State& state, int index) {
    maskBy<SV::String>(state, kMaskings[index], kMaskings[index].ours);
}
void maskByByte(benchmark::State& state, int index) {
    maskBy<std::string>(state, kMaskings[index], kMaskings[index].peer);
}
void copyText(benchmark::State& state, int index) {
    maskBy<std::string>(state, kMaskings[index], [](const std::string& text) { return text; });
}
BENCHMARK_CAPTURE(maskOurs, mask, 0)->Apply(textArguments);
BENCHMARK_CAPTURE(maskByByte, mask, 0)->Apply(textArguments);
BENCHMARK_CAPTURE(maskOurs, unmask, 1)->Apply(textArguments);
BENCHMARK_CAPTURE(maskByByte, unmask, 1)->Apply(textArguments);
BENCHMARK_CAPTURE(maskOurs, csv, 2)->Apply(textArguments);
BENCHMARK_CAPTURE(maskByByte, csv, 2)->Apply(textArguments);
BENCHMARK_CAPTURE(copyText, copy, 0)->Apply(textArguments);

// -- Splitting

using Texts = std::vector<std::string>;

Texts splitByByte(const std::string& text) {
    Texts tokens(1);
    for (const char c : text) {
        if (c == ';') {
            tokens.emplace_back();
        } else {
            tokens.back() += c;
        }
    }
    return tokens;
}

Texts splitByAbseil(const std::string& text) { return absl::StrSplit(text, ';'); }

ZelVectorSequence<SV::String> splitByUs(const SV::String& text) {
    ZelVectorSequence<SV::String> tokens;
    Zel_SplitIntoTokens(text, ';', tokens);
    return tokens;
}

template <typename Text, typename Function>
void split(benchmark::State& state, Function cut) {
    const std::string text = sampleText(static_cast<std::size_t>(state.range(0)),
                                        static_cast<std::size_t>(state.range(1)));
    const auto view = [](const auto& token) { return std::string_view(token); };
    if (!std::ranges::equal(splitByUs(SV::String(text)).elements(), splitByByte(text), {}, view,
                            view)) {
        return state.SkipWithError("the results differ");
    }
    const Text source(text);
    for (auto _ : state) benchmark::DoNotOptimize(cut(source));
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * text.size()));
}
void splitOurs(benchmark::State& state) { split<SV::String>(state, splitByUs); }
void splitAbseil(benchmark::State& state) { split<std::string>(state, splitByAbseil); }
void splitBytes(benchmark::State& state) { split<std::string>(state, splitByByte); }
BENCHMARK(splitOurs)->Apply(textArguments);
BENCHMARK(splitAbseil)->Apply(textArguments);
BENCHMARK(splitBytes)->Apply(textArguments);

}  // namespace
