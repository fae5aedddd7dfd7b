// What the helpers leave in memory.

#include <gtest/gtest.h>

#include <array>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "crypt/vectors.h"
#include "support/temp_dir.h"
#include "zbasic/zbase64.h"
#include "zbasic/zcrypt.h"
#include "zbasic/zdbuser.h"
#include "zbasic/zdes.h"
#include "zbasic/ztrace.h"

#include <windows.h>

namespace {

using U = ZelCryptoUtils;

constexpr std::size_t kPiece = 6;
constexpr std::size_t kPieceStep = 2;  // so that a piece lies in any 7 bytes of the secret
constexpr unsigned char kMask = 0xA7;

void forget(void* data, std::size_t size) { ::SecureZeroMemory(data, size); }

// A text that is in memory only while somebody holds it: here it is kept masked.
class Secret {
public:
    explicit Secret(std::size_t size) : m_masked(size) {
        for (std::size_t i = 0; i < size; ++i) {
            // Printable, and no piece of it twice.
            m_masked[i] = static_cast<unsigned char>(('!' + (i * 41 + i / 7) % 90) ^ kMask);
        }
        for (std::size_t piece = 0; piece + kPiece <= size; piece += kPieceStep) {
            m_isBegun[m_masked[piece] ^ kMask] = true;
        }
    }

    // To be forgotten by the caller, 0 behind it.
    char* show() const {
        char* const text = static_cast<char*>(std::calloc(m_masked.size() + 1, 1));
        for (std::size_t i = 0; i < m_masked.size(); ++i) {
            text[i] = static_cast<char>(m_masked[i] ^ kMask);
        }
        return text;
    }
    std::size_t size() const { return m_masked.size(); }

    // How often a piece of it lies in these bytes.
    int countIn(std::string_view bytes) const {
        return countIn(reinterpret_cast<const unsigned char*>(bytes.data()), bytes.size());
    }

    // How often a piece of it lies in the memory of this process that programs write to.
    int countInMemory() const {
        int count = 0;
        MEMORY_BASIC_INFORMATION region;
        const unsigned char* at = nullptr;
        for (; ::VirtualQuery(at, &region, sizeof region); at += region.RegionSize) {
            at = static_cast<const unsigned char*>(region.BaseAddress);
            const bool isWritten = region.State == MEM_COMMIT && region.Protect == PAGE_READWRITE;
            if (isWritten) count += countIn(at, region.RegionSize);
        }
        return count;
    }

private:
    // In one pass, whatever the number of pieces: a dump is long.
    int countIn(const unsigned char* begin, std::size_t size) const {
        int count = 0;
        for (const unsigned char* at = begin; at + kPiece <= begin + size; ++at) {
            if (!m_isBegun[*at]) continue;
            for (std::size_t piece = 0; piece + kPiece <= m_masked.size(); piece += kPieceStep) {
                if (isPiece(at, piece)) ++count;
            }
        }
        return count;
    }
    bool isPiece(const unsigned char* at, std::size_t piece) const {
        for (std::size_t i = 0; i < kPiece; ++i) {
            if (static_cast<unsigned char>(at[i] ^ kMask) != m_masked[piece + i]) return false;
        }
        return true;
    }

    std::vector<unsigned char> m_masked;
    std::array<bool, 256> m_isBegun = {};  // by the first byte of a piece
};

void drop(char* text, std::size_t size) {
    forget(text, size);
    std::free(text);
}

const unsigned char* bytesOf(const char* text) {
    return reinterpret_cast<const unsigned char*>(text);
}

template <class Byte>
void dropResult(std::pair<Byte*, int> result) {
    ASSERT_NE(result.first, nullptr);
    drop(reinterpret_cast<char*>(result.first), static_cast<std::size_t>(result.second));
}

// By the helper with a type.
template <long type>
void encipher(char* text, std::string& digits) {
    char* out = nullptr;
    const long size = ZelEncryption::Instance().Encrypt(type, text, out, -1);
    digits = taken(std::pair(out, static_cast<int>(size)));
}

template <long type>
void decipher(std::string& digits, char*) {
    char* out = nullptr;
    const long size = ZelEncryption::Instance().Decrypt(type, digits.data(), out);
    ASSERT_GT(size, 0);
    drop(out, static_cast<std::size_t>(size));
}

struct FileCloser {
    void operator()(std::FILE* file) const { std::fclose(file); }
};
using File = std::unique_ptr<std::FILE, FileCloser>;

const TempDir* g_folder = nullptr;  // of the test

const unsigned char kPublic[32] = {1, 2, 3};

void writeBlocks(char* text, std::string& path) {
    path = g_folder->path("blocks");
    const File file(std::fopen(path.c_str(), "wb"));
    des_ctx schedule;
    ades_key(&schedule, kPublic);
    des_writer writer(file.get(), &schedule);
    EXPECT_EQ(writer.put(text), 0);
    EXPECT_EQ(writer.flush(), 0);
}

void writeBlocksAndStop(std::string&, char* text) {
    const File file(std::fopen(g_folder->path("begun").c_str(), "wb"));
    des_ctx schedule;
    ades_key(&schedule, kPublic);
    des_writer(file.get(), &schedule).put(text);
}

void readBlocks(std::string& path, char*) {
    const File file(std::fopen(path.c_str(), "rb"));
    des_ctx schedule;
    ades_key(&schedule, kPublic);
    des_reader reader(file.get(), &schedule);
    int count = 0;
    while (reader.get() >= 0) ++count;
    EXPECT_EQ(count, 104);
}

void readOneByte(std::string& path, char*) {
    const File file(std::fopen(path.c_str(), "rb"));
    des_ctx schedule;
    ades_key(&schedule, kPublic);
    EXPECT_GE(des_reader(file.get(), &schedule).get(), 0);
}

// Of what a program leaves, support gets a dump.
void expectNothingInDump(const Secret& secret) {
    const std::filesystem::path folder = g_folder->path("dump");
    std::filesystem::create_directory(folder);
    for (const char* const name : {"TEMP", "TMP"}) {
        ::SetEnvironmentVariableA(name, folder.string().c_str());
    }
    ASSERT_EQ(Fct_CreateMiniDump("secrets.cpp", 1), kDumpWritten);
    const std::string dump = readFile(std::filesystem::directory_iterator(folder)->path());
    std::filesystem::remove_all(folder);
    EXPECT_GT(dump.size(), 1000u);
    EXPECT_EQ(secret.countIn(dump), 0);
}

}  // namespace

TEST(Secrets, AreNotLeftInMemory) {
    const TempDir folder;
    g_folder = &folder;
    struct Case {
        const char* why;
        std::size_t size;
        void (*prepare)(char* text, std::string& prepared);  // keeps only what is no secret
        void (*use)(std::string& prepared, char* text);
    };
    const auto aesDigits = [](char* text, std::string& digits) {
        digits = taken(U::AESEncrypt(text));
    };
    const auto nothing = [](char*, std::string&) {};
    const Case cases[] = {
        {"AES of a text", 100, nothing,
         [](std::string&, char* text) { U::Free(U::AESEncrypt(text).first); }},
        {"text of AES", 100, aesDigits,
         [](std::string& digits, char*) { dropResult(U::AESDecrypt(digits.c_str())); }},
        {"CBC of part of a block", 44, nothing,
         [](std::string&, char* text) {
             const auto* const in = reinterpret_cast<unsigned char*>(text);
             U::Free(U::AESEncrypt(in, 44, kPublic, 256, kPublic).first);
         }},
        {"the key of CBC", 32, nothing,
         [](std::string&, char* text) {
             const auto* const key = reinterpret_cast<unsigned char*>(text);
             U::Free(U::AESEncrypt(kPublic, 20, key, 256, kPublic).first);
             U::Free(U::AESDecrypt(kPublic, 20, key, 256, kPublic).first);
         }},
        {"the reverse", 44,
         [](char* text, std::string& cipher) {
             cipher = taken(U::AESEncrypt(bytesOf(text), 44, kPublic, 128, kPublic));
         },
         [](std::string& cipher, char*) {
             dropResult(U::AESDecrypt(bytes(cipher), 44, kPublic, 128, kPublic));
         }},
        {"a single block", 16, nothing,
         [](std::string&, char* text) {
             const auto* const in = reinterpret_cast<unsigned char*>(text);
             U::Free(U::AESEncrypt(in, 16, kPublic, 16).first);
         }},
        {"the reverse", 16,
         [](char* text, std::string& cipher) {
             cipher = taken(U::AESEncrypt(bytesOf(text), 16, kPublic, 32));
         },
         [](std::string& cipher, char*) {
             dropResult(U::AESDecrypt(bytes(cipher), 16, kPublic, 32));
         }},
        {"the key of a block", 32, nothing,
         [](std::string&, char* text) {
             const auto* const key = reinterpret_cast<unsigned char*>(text);
             U::Free(U::AESEncrypt(kPublic, 16, key, 32).first);
             U::Free(U::AESDecrypt(kPublic, 16, key, 32).first);
         }},
        {"the key of DES", 8, nothing,
         [](std::string&, char* text) {
             des_ctx schedule;
             ades_key(&schedule, reinterpret_cast<unsigned char*>(text));
             unsigned char block[8] = {};
             ades_enc(&schedule, block, 1);
             ades_dec(&schedule, block, 1);
             forget(&schedule, sizeof schedule);
         }},
        {"DES of a text", 100, nothing,
         [](std::string&, char* text) {
             char digits[300];
             Zel_Encrypt(text, digits);
         }},
        {"text of DES", 96,
         [](char* text, std::string& digits) {
             digits.resize(193);
             Zel_Encrypt(text, digits.data());
         },
         [](std::string& digits, char*) {
             unsigned char* out = nullptr;
             Zel_Decrypt(digits.data(), out);
             drop(reinterpret_cast<char*>(out), 96);
         }},
        {"the first type", 100, encipher<0>, decipher<0>},
        {"a later type", 100, encipher<2>, decipher<2>},
        {"encrypting by them", 100, nothing,
         [](std::string& digits, char* text) {
             encipher<0>(text, digits);
             encipher<2>(text, digits);
         }},
        {"hexadecimal digits", 100,
         [](char* text, std::string& digits) { digits = taken(U::HexEncode(bytesOf(text), 100)); },
         [](std::string& digits, char*) { dropResult(U::HexDecode(digits.c_str())); }},
        {"digits with a fault", 100,
         [](char* text, std::string& digits) {
             digits = taken(U::HexEncode(bytesOf(text), 100)) + "xx";
         },
         [](std::string& digits, char*) { EXPECT_FALSE(U::HexDecode(digits.c_str()).first); }},
        {"base64 in lines", 100,
         [](char* text, std::string& lines) { lines = taken(U::Base64Encode(bytesOf(text), 100)); },
         [](std::string& lines, char*) { dropResult(U::Base64Decode(lines.c_str())); }},
        {"DES into a file", 100, writeBlocks, readBlocks},
        {"a begun block, written", 15, nothing, writeBlocksAndStop},
        {"a begun block, read", 100, writeBlocks, readOneByte},
        {"password for an application", 15,
         [](char* text, std::string& base64) {
             text[15] = 1;
             const auto [cipher, size] =
                 U::AESEncrypt(reinterpret_cast<unsigned char*>(text), 16, kPublic, 16);
             char* out = nullptr;
             unsigned long outSize = 0;
             Zel_NewBase64Encode(reinterpret_cast<char*>(cipher), 16, out, outSize);
             base64.assign(out, outSize);
             delete[] out;
             U::Free(cipher);
         },
         [](std::string& base64, char*) {
             const SV::String key(reinterpret_cast<const char*>(kPublic), 16);
             SV::String password = Zel_DecryptPasswordForAPP(SV::String(base64), key);
             EXPECT_EQ(password.size(), 15u);
             forget(&password, sizeof password);
             new (&password) SV::String;
         }},
        {"the key of such a password", 16, nothing,
         [](std::string&, char* text) {
             SV::String key(text, 16);
             EXPECT_TRUE(Zel_DecryptPasswordForAPP("QUJDREVGR0hJSktMTU5PUA==", key).empty());
             forget(&key, sizeof key);
             new (&key) SV::String;
         }},
        {"user file", 100,
         [](char* text, std::string& path) {
             text[10] = text[40] = '\n';
             path = g_folder->write("user.txt", taken(U::AESEncrypt(text)));
         },
         [](std::string& path, char*) {
             ZelDBUserUtils utils(path.c_str());
             const ZelDBUserUtils copy(utils);
             EXPECT_TRUE(utils.GetDBUserPassword("").size() == 59);
         }},
    };
    // Under Wine each dump takes more than two seconds: for a run by hand.
    const bool isEachDumped = std::getenv("SECRETS_DUMP_EACH_CALL") != nullptr;
    for (const auto& [why, size, prepare, use] : cases) {
        SCOPED_TRACE(why);
        const Secret secret(size);
        std::string prepared;
        char* text = secret.show();
        EXPECT_GT(secret.countInMemory(), 0) << "the search finds what is there";
        prepare(text, prepared);
        drop(text, size);
        ASSERT_EQ(secret.countInMemory(), 0) << "before the call";
        text = secret.show();
        use(prepared, text);
        drop(text, size);
        EXPECT_EQ(secret.countInMemory(), 0);
        if (isEachDumped) expectNothingInDump(secret);
    }
    expectNothingInDump(Secret(100));  // all are the beginning of the same text
}
