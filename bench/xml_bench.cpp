// Text made safe for XML and SGML.

#include <benchmark/benchmark.h>
#include <libxml/entities.h>
#include <libxml/globals.h>

#include <random>
#include <sstream>
#include <string>

#include "zbasic/zsgml.h"

namespace {

// Words and blanks, every fiftieth byte a special one.
std::string sample(std::size_t size) {
    std::mt19937 random(1);
    std::string text;
    while (text.size() < size) {
        const bool isSpecial = random() % 50 == 0;
        text += isSpecial ? "<>&\""[random() % 4] : "abcdefghijklmnop qrstuvwxyz"[random() % 27];
    }
    return text;
}

std::string byteByByte(const std::string& text) {
    std::string out;
    for (const char c : text) {
        switch (c) {
            case '<':
                out += "&lt;";
                break;
            case '>':
                out += "&gt;";
                break;
            case '&':
                out += "&amp;";
                break;
            case '"':
                out += "&quot;";
                break;
            default:
                out += c;
        }
    }
    return out;
}

std::string libxml(const std::string& text) {
    xmlChar* const escaped =
        xmlEncodeSpecialChars(nullptr, reinterpret_cast<const xmlChar*>(text.c_str()));
    std::string out(reinterpret_cast<const char*>(escaped));
    xmlFree(escaped);
    return out;
}

void finish(benchmark::State& state) {
    state.SetBytesProcessed(state.iterations() * state.range(0));
}

void xml_ours(benchmark::State& state) {
    const std::string bytes = sample(static_cast<std::size_t>(state.range(0)));
    const SV::String text(bytes);
    if (std::string_view(ZelSGMLString::XMLStr(text, true)) != libxml(bytes) ||
        libxml(bytes) != byteByByte(bytes)) {
        return state.SkipWithError("the results differ");
    }
    for (auto _ : state) benchmark::DoNotOptimize(ZelSGMLString::XMLStr(text, true));
    finish(state);
}

void xml_libxml(benchmark::State& state) {
    const std::string text = sample(static_cast<std::size_t>(state.range(0)));
    for (auto _ : state) {
        xmlChar* const escaped =
            xmlEncodeSpecialChars(nullptr, reinterpret_cast<const xmlChar*>(text.c_str()));
        benchmark::DoNotOptimize(escaped);
        xmlFree(escaped);
    }
    finish(state);
}

void xml_bytes(benchmark::State& state) {
    const std::string text = sample(static_cast<std::size_t>(state.range(0)));
    for (auto _ : state) benchmark::DoNotOptimize(byteByByte(text));
    finish(state);
}

// Into a stream that keeps its memory, `type` being the export file type.
void insert(benchmark::State& state, int type) {
    ZelSGMLString::SetExportFileType(static_cast<ZelExportFileType>(type));
    const ZelSGMLString text(SV::String(sample(static_cast<std::size_t>(state.range(0)))));
    std::ostringstream stream;
    for (auto _ : state) {
        stream.seekp(0);
        stream << text;
        benchmark::DoNotOptimize(stream);
    }
    finish(state);
}

void stream_xml(benchmark::State& state) { insert(state, kExportFileTypeXml); }
void stream_map(benchmark::State& state) { insert(state, 0); }

BENCHMARK(xml_ours)->Arg(1 << 10)->Arg(1 << 14)->Arg(1 << 20);
BENCHMARK(xml_libxml)->Arg(1 << 10)->Arg(1 << 14)->Arg(1 << 20);
BENCHMARK(xml_bytes)->Arg(1 << 10)->Arg(1 << 14)->Arg(1 << 20);
BENCHMARK(stream_xml)->Arg(1 << 10)->Arg(1 << 14)->Arg(1 << 20);
BENCHMARK(stream_map)->Arg(1 << 10)->Arg(1 << 14)->Arg(1 << 20);

}  // namespace
