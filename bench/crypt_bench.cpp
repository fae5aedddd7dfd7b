// The encryption helpers beside libcrypto: its bulk interface, its deprecated calls, its base64
// filters and its DES. The results are compared before anything is measured.

#define OPENSSL_SUPPRESS_DEPRECATED
#include <benchmark/benchmark.h>
#include <openssl/aes.h>
#include <openssl/bio.h>
#include <openssl/buffer.h>
#include <openssl/des.h>
#include <openssl/evp.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "zbasic/zcrypt.h"
#include "zbasic/zdes.h"

namespace {

using U = ZelCryptoUtils;
template <class Byte>
using Result = std::pair<Byte*, int>;

std::string randomBytes(std::size_t size) {
    std::mt19937 random(1);
    std::string bytes(size, '\0');
    for (char& byte : bytes) byte = static_cast<char>(random());
    return bytes;
}

unsigned char* bytesOf(std::string& text) { return reinterpret_cast<unsigned char*>(text.data()); }

std::string g_key = randomBytes(32);
std::string g_iv = randomBytes(256);

template <class Byte>
std::string taken(Result<Byte> result) {
    std::string text(reinterpret_cast<char*>(result.first),
                     static_cast<std::size_t>(result.second));
    std::free(result.first);
    return text;
}

// Measures `call`, which gives a result to be released, after a look at its answer.
template <class Call>
void measure(benchmark::State& state, std::size_t size, const std::string& expected, Call call) {
    if (taken(call()) != expected) {
        state.SkipWithError("wrong answer");
        return;
    }
    for (auto _ : state) {
        const auto result = call();
        benchmark::DoNotOptimize(result.first);
        std::free(result.first);
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * size));
}

// AES as the helpers once called it: schedule, a copy of the IV, a zeroed buffer.
Result<unsigned char> deprecatedCbc(int mode, const unsigned char* in, int size) {
    AES_KEY schedule;
    (mode == AES_ENCRYPT ? AES_set_encrypt_key : AES_set_decrypt_key)(bytesOf(g_key), 256,
                                                                      &schedule);
    auto* const iv = static_cast<unsigned char*>(std::malloc(256));
    std::memcpy(iv, g_iv.data(), 256);
    const auto length = static_cast<std::size_t>(size);
    auto* const out = static_cast<unsigned char*>(std::calloc(length + 1, 1));
    AES_cbc_encrypt(in, out, length, &schedule, iv, mode);
    std::free(iv);
    return {out, size};
}

Result<unsigned char> evpCbc(int mode, const unsigned char* in, int size) {
    static EVP_CIPHER* const cipher = EVP_CIPHER_fetch(nullptr, "AES-256-CBC", nullptr);
    auto* const out = static_cast<unsigned char*>(std::malloc(static_cast<std::size_t>(size) + 1));
    EVP_CIPHER_CTX* const context = EVP_CIPHER_CTX_new();
    EVP_CipherInit_ex2(context, cipher, bytesOf(g_key), bytesOf(g_iv), mode, nullptr);
    EVP_CIPHER_CTX_set_padding(context, 0);
    int written = 0;
    EVP_CipherUpdate(context, out, &written, in, size);
    EVP_CIPHER_CTX_free(context);
    return {out, size};
}

Result<unsigned char> ourCbc(int mode, const unsigned char* in, int size) {
    return mode == AES_ENCRYPT ? U::AESEncrypt(in, size, bytesOf(g_key), 256, bytesOf(g_iv))
                               : U::AESDecrypt(in, size, bytesOf(g_key), 256, bytesOf(g_iv));
}

template <auto call, int mode>
void aes(benchmark::State& state) {
    std::string in = randomBytes(static_cast<std::size_t>(state.range(0)));
    const int size = static_cast<int>(in.size());
    const std::string expected = taken(deprecatedCbc(mode, bytesOf(in), size));
    measure(state, in.size(), expected, [&] { return call(mode, bytesOf(in), size); });
}

void aesBuiltIn(benchmark::State& state) {
    const std::string text(static_cast<std::size_t>(state.range(0)), 'x');
    const std::string expected = taken(U::AESEncrypt(text.c_str()));
    measure(state, text.size(), expected, [&] { return U::AESEncrypt(text.c_str()); });
}

// Hexadecimal digits byte by byte.
Result<char> naiveHexEncode(const unsigned char* data, int length) {
    const auto size = static_cast<std::size_t>(length);
    auto* const text = static_cast<char*>(std::calloc(2 * size + 1, 1));
    for (std::size_t i = 0; i < size; ++i) {
        text[2 * i] = "0123456789ABCDEF"[data[i] >> 4];
        text[2 * i + 1] = "0123456789ABCDEF"[data[i] & 15];
    }
    return {text, 2 * length};
}

int naiveDigit(char c) {
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
    if (c >= '0' && c <= '9') return c - '0';
    return c >= 'a' && c <= 'f' ? c - 'a' + 10 : -1;
}

Result<unsigned char> naiveHexDecode(const char* text) {
    const std::size_t size = std::strlen(text) / 2;
    auto* const data = static_cast<unsigned char*>(std::calloc(size + 1, 1));
    for (std::size_t i = 0; i < size; ++i) {
        const int high = naiveDigit(text[2 * i]);
        const int low = naiveDigit(text[2 * i + 1]);
        if (high < 0 || low < 0) {
            std::free(data);
            return {nullptr, -1};
        }
        data[i] = static_cast<unsigned char>(high << 4 | low);
    }
    return {data, static_cast<int>(size)};
}

Result<char> chainEncode(const unsigned char* data, int length) {
    BIO* const chain = BIO_push(BIO_new(BIO_f_base64()), BIO_new(BIO_s_mem()));
    BIO_write(chain, data, length);
    BIO_flush(chain);
    BUF_MEM* memory = nullptr;
    BIO_get_mem_ptr(chain, &memory);
    auto* const text = static_cast<char*>(std::malloc(memory->length + 1));
    std::memcpy(text, memory->data, memory->length);
    text[memory->length] = '\0';
    const int size = static_cast<int>(memory->length);
    BIO_free_all(chain);
    return {text, size};
}

Result<unsigned char> chainDecode(const char* text) {
    const std::size_t length = std::strlen(text);
    auto* const data = static_cast<unsigned char*>(std::malloc(length));
    BIO* const chain =
        BIO_push(BIO_new(BIO_f_base64()), BIO_new_mem_buf(text, static_cast<int>(length)));
    const int size = BIO_read(chain, data, static_cast<int>(length));
    BIO_free_all(chain);
    return {data, size};
}

// Of one size, different ones: what a branch does with the same bytes again and again is soon
// predicted, which is not so with data that is seen for the first time.
std::vector<std::string> inputsOf(std::size_t size) {
    constexpr std::size_t kBytes = 1 << 18;
    const std::string bytes = randomBytes(std::max(size, kBytes));
    std::vector<std::string> inputs;
    for (std::size_t at = 0; at < bytes.size(); at += size)
        inputs.push_back(bytes.substr(at, size));
    return inputs;
}

// As `measure`, for all inputs in turn.
template <class Call>
void measureInTurn(benchmark::State& state, std::vector<std::string>& inputs,
                   const std::vector<std::string>& expected, Call call) {
    for (std::size_t i = 0; i < inputs.size(); ++i) {
        if (taken(call(inputs[i])) != expected[i]) return state.SkipWithError("wrong answer");
    }
    std::size_t i = 0;
    for (auto _ : state) {
        const auto result = call(inputs[i]);
        benchmark::DoNotOptimize(result.first);
        std::free(result.first);
        if (++i == inputs.size()) i = 0;
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations()) * state.range(0));
}

template <auto encoder>
std::vector<std::string> encoded(std::vector<std::string>& inputs) {
    std::vector<std::string> texts;
    for (std::string& data : inputs) {
        texts.push_back(taken(encoder(bytesOf(data), static_cast<int>(data.size()))));
    }
    return texts;
}

template <auto call, auto reference>
void encode(benchmark::State& state) {
    std::vector<std::string> inputs = inputsOf(static_cast<std::size_t>(state.range(0)));
    measureInTurn(state, inputs, encoded<reference>(inputs), [](std::string& data) {
        return call(bytesOf(data), static_cast<int>(data.size()));
    });
}

template <auto call, auto encoder>
void decode(benchmark::State& state) {
    std::vector<std::string> inputs = inputsOf(static_cast<std::size_t>(state.range(0)));
    std::vector<std::string> texts = encoded<encoder>(inputs);
    measureInTurn(state, texts, inputs, [](std::string& text) { return call(text.c_str()); });
}

// DES: both schedules of one key.
struct DesKeys {
    des_ctx ours;
    DES_key_schedule theirs;

    DesKeys() {
        ades_key(&ours, bytesOf(g_key));
        DES_set_key_unchecked(reinterpret_cast<const_DES_cblock*>(g_key.data()), &theirs);
    }
};

void theirBlocks(DES_key_schedule& schedule, std::string& data) {
    for (std::size_t at = 0; at < data.size(); at += 8) {
        auto* const block = reinterpret_cast<DES_cblock*>(data.data() + at);
        DES_ecb_encrypt(block, block, &schedule, DES_ENCRYPT);
    }
}

void ourBlocks(des_ctx& schedule, std::string& data) {
    ades_enc(&schedule, bytesOf(data), static_cast<int>(data.size() / 8));
}

template <bool isOurs>
void des(benchmark::State& state) {
    DesKeys keys;
    std::string data = randomBytes(static_cast<std::size_t>(state.range(0)));
    std::string other = data;
    theirBlocks(keys.theirs, other);
    ourBlocks(keys.ours, data);
    if (data != other) state.SkipWithError("wrong answer");
    for (auto _ : state) {
        if constexpr (isOurs) {
            ourBlocks(keys.ours, data);
        } else {
            theirBlocks(keys.theirs, data);
        }
        benchmark::DoNotOptimize(data.data());
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * data.size()));
}

void desKey(benchmark::State& state) {
    DesKeys keys;
    for (auto _ : state) {
        ades_key(&keys.ours, bytesOf(g_key));
        benchmark::DoNotOptimize(keys);
    }
}

void desKeyPeer(benchmark::State& state) {
    DesKeys keys;
    for (auto _ : state) {
        DES_set_key_unchecked(reinterpret_cast<const_DES_cblock*>(g_key.data()), &keys.theirs);
        benchmark::DoNotOptimize(keys);
    }
}

constexpr std::size_t kStreamSize = 10'000'000;

void desWriter(benchmark::State& state) {
    DesKeys keys;
    const std::string data = randomBytes(kStreamSize);
    std::FILE* const file = std::tmpfile();
    for (auto _ : state) {
        std::rewind(file);
        des_writer writer(file, &keys.ours);
        for (const char byte : data) writer.put(static_cast<unsigned char>(byte));
        if (writer.flush() != 0) state.SkipWithError("not written");
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * data.size()));
    std::fclose(file);
}

void desReader(benchmark::State& state) {
    DesKeys keys;
    std::string data = randomBytes(kStreamSize);
    const std::string plain = data;
    ourBlocks(keys.ours, data);
    std::FILE* const file = std::tmpfile();
    std::fwrite(data.data(), 1, data.size(), file);
    for (auto _ : state) {
        std::rewind(file);
        des_reader reader(file, &keys.ours);
        std::size_t same = 0;
        for (int byte; (byte = reader.get()) != -1;) {
            same += static_cast<char>(byte) == plain[same] ? 1 : 0;
        }
        if (same != plain.size()) state.SkipWithError("wrong answer");
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * data.size()));
    std::fclose(file);
}

constexpr int kMiB = 1 << 20;

BENCHMARK(aes<ourCbc, AES_ENCRYPT>)->Name("aes encrypt, ours")->Arg(32)->Arg(kMiB);
BENCHMARK(aes<evpCbc, AES_ENCRYPT>)->Name("aes encrypt, EVP")->Arg(32)->Arg(kMiB);
BENCHMARK(aes<deprecatedCbc, AES_ENCRYPT>)->Name("aes encrypt, deprecated")->Arg(32)->Arg(kMiB);
BENCHMARK(aes<ourCbc, AES_DECRYPT>)->Name("aes decrypt, ours")->Arg(32)->Arg(kMiB);
BENCHMARK(aes<evpCbc, AES_DECRYPT>)->Name("aes decrypt, EVP")->Arg(32)->Arg(kMiB);
BENCHMARK(aes<deprecatedCbc, AES_DECRYPT>)->Name("aes decrypt, deprecated")->Arg(32)->Arg(kMiB);
BENCHMARK(aesBuiltIn)->Name("aes encrypt with the built-in key and hex")->Arg(32);
BENCHMARK(encode<U::HexEncode, naiveHexEncode>)
    ->Name("hex encode, ours")
    ->Arg(64)
    ->Arg(4096)
    ->Arg(kMiB);
BENCHMARK(encode<naiveHexEncode, naiveHexEncode>)
    ->Name("hex encode, naive")
    ->Arg(64)
    ->Arg(4096)
    ->Arg(kMiB);
BENCHMARK(decode<U::HexDecode, naiveHexEncode>)
    ->Name("hex decode, ours")
    ->Arg(64)
    ->Arg(4096)
    ->Arg(kMiB);
BENCHMARK(decode<naiveHexDecode, naiveHexEncode>)
    ->Name("hex decode, naive")
    ->Arg(64)
    ->Arg(4096)
    ->Arg(kMiB);
BENCHMARK(encode<U::Base64Encode, chainEncode>)
    ->Name("base64 encode, ours")
    ->Arg(64)
    ->Arg(4096)
    ->Arg(kMiB);
BENCHMARK(encode<chainEncode, chainEncode>)
    ->Name("base64 encode, filter")
    ->Arg(64)
    ->Arg(4096)
    ->Arg(kMiB);
BENCHMARK(decode<U::Base64Decode, chainEncode>)
    ->Name("base64 decode, ours")
    ->Arg(64)
    ->Arg(4096)
    ->Arg(kMiB);
BENCHMARK(decode<chainDecode, chainEncode>)
    ->Name("base64 decode, filter")
    ->Arg(64)
    ->Arg(4096)
    ->Arg(kMiB);
BENCHMARK(des<true>)->Name("des, ours")->Arg(8)->Arg(kMiB);
BENCHMARK(des<false>)->Name("des, OpenSSL")->Arg(8)->Arg(kMiB);
BENCHMARK(desKey)->Name("des key, ours");
BENCHMARK(desKeyPeer)->Name("des key, OpenSSL");
BENCHMARK(desWriter)->Name("des_writer")->Unit(benchmark::kMillisecond);
BENCHMARK(desReader)->Name("des_reader")->Unit(benchmark::kMillisecond);

}  // namespace
