// Base64 beside table code as one writes it first, and OpenSSL's.

#include <benchmark/benchmark.h>
#include <openssl/evp.h>

#include <cstdint>
#include <cstring>
#include <memory>
#include <random>
#include <string>

#include "text/base64core.h"
#include "zbasic/zbase64.h"

namespace {

constexpr char kAlphabet[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

std::string bytesOf(std::size_t size) {
    std::mt19937 random(1);
    std::string bytes(size, '\0');
    for (char& c : bytes) c = static_cast<char>(random());
    return bytes;
}

// Each codec makes a buffer for what it gives, as the interface has it.
using Codec = bool (*)(const char* in, unsigned long inLen, char*& out, unsigned long& outLen);

bool encodeByTable(const char* in, unsigned long size, char*& out, unsigned long& outLen) {
    outLen = (size + 2) / 3 * 4;
    out = new char[outLen + 1];
    char* to = out;
    const auto byte = [in](unsigned long i) { return static_cast<unsigned char>(in[i]); };
    unsigned long i = 0;
    for (; i + 2 < size; i += 3) {
        *to++ = kAlphabet[byte(i) >> 2];
        *to++ = kAlphabet[(byte(i) & 3) << 4 | byte(i + 1) >> 4];
        *to++ = kAlphabet[(byte(i + 1) & 15) << 2 | byte(i + 2) >> 6];
        *to++ = kAlphabet[byte(i + 2) & 63];
    }
    if (i < size) {
        const unsigned second = i + 1 < size ? byte(i + 1) : 0;
        *to++ = kAlphabet[byte(i) >> 2];
        *to++ = kAlphabet[(byte(i) & 3) << 4 | second >> 4];
        *to++ = i + 1 < size ? kAlphabet[(second & 15) << 2] : '=';
        *to++ = '=';
    }
    *to = '\0';
    return true;
}

const struct Values {
    Values() {
        std::memset(of, -1, sizeof of);
        for (int i = 0; i < 64; ++i)
            of[static_cast<unsigned char>(kAlphabet[i])] = static_cast<signed char>(i);
    }
    signed char of[256];
} kValues;

bool decodeByTable(const char* in, unsigned long size, char*& out, unsigned long& outLen) {
    outLen = size / 4 * 3;
    for (; size > 0 && in[size - 1] == '='; --size) --outLen;
    out = new char[outLen + 1];
    char* to = out;
    const auto value = [in](unsigned long i) {
        return static_cast<int>(kValues.of[static_cast<unsigned char>(in[i])]);
    };
    unsigned long i = 0;
    for (; i + 3 < size; i += 4) {
        const int a = value(i), b = value(i + 1), c = value(i + 2), d = value(i + 3);
        if (a < 0 || b < 0 || c < 0 || d < 0) return false;
        *to++ = static_cast<char>(a << 2 | b >> 4);
        *to++ = static_cast<char>(b << 4 | c >> 2);
        *to++ = static_cast<char>(c << 6 | d);
    }
    if (size - i >= 2) {
        const int a = value(i), b = value(i + 1), c = size - i == 3 ? value(i + 2) : 0;
        if (a < 0 || b < 0 || c < 0) return false;
        *to++ = static_cast<char>(a << 2 | b >> 4);
        if (size - i == 3) *to++ = static_cast<char>(b << 4 | c >> 2);
    }
    *to = '\0';
    return true;
}

bool encodeBySsl(const char* in, unsigned long size, char*& out, unsigned long& outLen) {
    out = new char[(size + 2) / 3 * 4 + 1];
    outLen = static_cast<unsigned long>(EVP_EncodeBlock(reinterpret_cast<unsigned char*>(out),
                                                        reinterpret_cast<const unsigned char*>(in),
                                                        static_cast<int>(size)));
    return true;
}

bool decodeBySsl(const char* in, unsigned long size, char*& out, unsigned long& outLen) {
    out = new char[size / 4 * 3 + 1];
    const int count =
        EVP_DecodeBlock(reinterpret_cast<unsigned char*>(out),
                        reinterpret_cast<const unsigned char*>(in), static_cast<int>(size));
    outLen = static_cast<unsigned long>(count);
    while (size > 0 && in[--size] == '=') --outLen;  // it counts the padding's zeros
    return count >= 0;
}

// What processors without SSSE3 take.
bool encodePlain(const char* in, unsigned long size, char*& out, unsigned long& outLen) {
    outLen = base64::encodedSize(size);
    out = new char[outLen + 1];
    *base64::encodePlain(in, size, out) = '\0';
    return true;
}

bool decodePlain(const char* in, unsigned long size, char*& out, unsigned long& outLen) {
    while (size > 0 && in[size - 1] == '=') --size;
    outLen = base64::decodedSize(size);
    out = new char[outLen + 1];
    char* const end = base64::decodePlain(in, size, out);
    if (end) *end = '\0';
    return end != nullptr;
}

bool encodeOld(const char* in, unsigned long size, char*& out, unsigned long& outLen) {
    return Zel_OldBase64Encode(const_cast<char*>(in), size, out, outLen);
}

bool decodeOld(const char* in, unsigned long size, char*& out, unsigned long& outLen) {
    return Zel_OldBase64Decode(const_cast<char*>(in), size, out, outLen);
}

std::string resultOf(Codec codec, const std::string& in) {
    char* out = nullptr;
    unsigned long outLen = 0;
    const bool isDone = codec(in.data(), in.size(), out, outLen);
    const std::unique_ptr<char[]> owner(out);
    return isDone ? std::string(out, outLen) : "failed";
}

void run(benchmark::State& state, Codec codec, const std::string& in, const std::string& expected) {
    if (resultOf(codec, in) != expected) return state.SkipWithError("the results differ");
    for (auto _ : state) {
        char* out = nullptr;
        unsigned long outLen = 0;
        benchmark::DoNotOptimize(codec(in.data(), in.size(), out, outLen));
        benchmark::DoNotOptimize(out[0]);
        delete[] out;
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * in.size()));
}

enum Padding { kPadded, kUnpadded };

std::string textOf(const std::string& bytes, Padding padding) {
    const std::string text = resultOf(encodeBySsl, bytes);
    return padding == kPadded ? text : text.substr(0, text.find_last_not_of('=') + 1);
}

void encode(benchmark::State& state, Codec codec, Padding padding) {
    const std::string bytes = bytesOf(static_cast<std::size_t>(state.range(0)));
    run(state, codec, bytes, textOf(bytes, padding));
}

void decode(benchmark::State& state, Codec codec, Padding padding) {
    const std::string bytes = bytesOf(static_cast<std::size_t>(state.range(0)));
    run(state, codec, textOf(bytes, padding), bytes);
}

void sizes(benchmark::internal::Benchmark* work) { work->Arg(64)->Arg(4 << 10)->Arg(1 << 20); }

BENCHMARK_CAPTURE(encode, new, Zel_NewBase64Encode, kPadded)->Apply(sizes);
BENCHMARK_CAPTURE(encode, old, encodeOld, kUnpadded)->Apply(sizes);
BENCHMARK_CAPTURE(encode, plain, encodePlain, kUnpadded)->Apply(sizes);
BENCHMARK_CAPTURE(encode, table, encodeByTable, kPadded)->Apply(sizes);
BENCHMARK_CAPTURE(encode, openssl, encodeBySsl, kPadded)->Apply(sizes);
BENCHMARK_CAPTURE(decode, new, Zel_NewBase64Decode, kPadded)->Apply(sizes);
BENCHMARK_CAPTURE(decode, old, decodeOld, kUnpadded)->Apply(sizes);
BENCHMARK_CAPTURE(decode, plain, decodePlain, kUnpadded)->Apply(sizes);
BENCHMARK_CAPTURE(decode, table, decodeByTable, kPadded)->Apply(sizes);
BENCHMARK_CAPTURE(decode, openssl, decodeBySsl, kPadded)->Apply(sizes);

}  // namespace
