// Against OpenSSL: its command-line program, its deprecated calls, its base64 filter and its DES.

#define OPENSSL_SUPPRESS_DEPRECATED
#include <gtest/gtest.h>
#include <openssl/aes.h>
#include <openssl/bio.h>
#include <openssl/buffer.h>
#include <openssl/des.h>
#include <openssl/evp.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <cstring>
#include <random>
#include <string>

#include "crypt/builtinkey.h"
#include "crypt/vectors.h"
#include "support/temp_dir.h"
#include "zbasic/zcrypt.h"
#include "zbasic/zdes.h"

namespace {

using U = ZelCryptoUtils;

unsigned char* mutableBytes(std::string& text) {
    return reinterpret_cast<unsigned char*>(text.data());
}

std::string ourCbc(int mode, const std::string& in, const std::string& key, const std::string& iv) {
    const int size = static_cast<int>(in.size());
    const int bits = static_cast<int>(8 * key.size());
    return taken(mode == AES_ENCRYPT ? U::AESEncrypt(bytes(in), size, bytes(key), bits, bytes(iv))
                                     : U::AESDecrypt(bytes(in), size, bytes(key), bits, bytes(iv)));
}

std::string ourBlock(int mode, const std::string& in, const std::string& key) {
    const int size = static_cast<int>(in.size());
    const int keySize = static_cast<int>(key.size());
    return taken(mode == AES_ENCRYPT ? U::AESEncrypt(bytes(in), size, bytes(key), keySize)
                                     : U::AESDecrypt(bytes(in), size, bytes(key), keySize));
}

AES_KEY deprecatedKey(int mode, const std::string& key) {
    AES_KEY schedule;
    const int bits = static_cast<int>(8 * key.size());
    (mode == AES_ENCRYPT ? AES_set_encrypt_key : AES_set_decrypt_key)(bytes(key), bits, &schedule);
    return schedule;
}

// `AES_cbc_encrypt` as it was called, from one buffer to another or where the data lies.
std::string deprecatedCbc(int mode, std::string in, const std::string& key, std::string iv,
                          bool isInPlace) {
    const AES_KEY schedule = deprecatedKey(mode, key);
    const std::size_t size = in.size();
    in.resize((size + 15) / 16 * 16);  // it reads whole blocks
    std::string other(in.size(), '\0');
    std::string& out = isInPlace ? in : other;
    AES_cbc_encrypt(bytes(in), mutableBytes(out), size, &schedule, mutableBytes(iv), mode);
    return out;
}

std::string chainEncoded(const std::string& data) {
    BIO* const chain = BIO_push(BIO_new(BIO_f_base64()), BIO_new(BIO_s_mem()));
    BIO_write(chain, data.data(), static_cast<int>(data.size()));
    BIO_flush(chain);
    BUF_MEM* memory = nullptr;
    BIO_get_mem_ptr(chain, &memory);
    std::string text(memory->data ? memory->data : "", memory->length);
    BIO_free_all(chain);
    return text;
}

std::string chainDecoded(const std::string& text) {
    std::string data(text.size(), '\0');
    const int size = static_cast<int>(text.size());
    BIO* const chain = BIO_push(BIO_new(BIO_f_base64()), BIO_new_mem_buf(text.data(), size));
    const int read = BIO_read(chain, data.data(), size);
    BIO_free_all(chain);
    if (read < 0) return "<-1>";
    data.resize(static_cast<std::size_t>(read));
    return data;
}

std::string ourEncoded(const std::string& data) {
    return taken(U::Base64Encode(bytes(data), static_cast<int>(data.size())));
}

// What the program gives for `data` on its standard input.
std::string opensslEnc(const std::string& options, const std::string& data) {
    const TempDir folder;
    const std::string in = folder.write("in", data);
    const std::string out = folder.path("out");
    const std::string command = "openssl enc -nopad -in " + in + " -out " + out + " " + options;
    EXPECT_EQ(std::system(command.c_str()), 0) << command;
    return readFile(out);
}

constexpr std::size_t kKeySizes[] = {16, 24, 32};
constexpr char kLegacyDes[] = "-des-ecb -provider legacy -provider default ";

}  // namespace

TEST(CryptPeers, CbcIsWhatTheDeprecatedCallsGave) {
    const std::string iv = randomBytes(16, 1);
    for (const std::size_t keySize : kKeySizes) {
        const std::string key = randomBytes(keySize, 2);
        for (std::size_t size = 0; size <= 65; ++size) {
            const std::string in = randomBytes(size, 3);
            for (const int mode : {AES_ENCRYPT, AES_DECRYPT}) {
                const std::string ours = ourCbc(mode, in, key, iv);
                EXPECT_EQ(toHex(ours), toHex(deprecatedCbc(mode, in, key, iv, false))) << size;
                EXPECT_EQ(toHex(ours), toHex(deprecatedCbc(mode, in, key, iv, true))) << size;
            }
        }
    }
}

TEST(CryptPeers, SingleBlocksAreWhatTheDeprecatedCallsGave) {
    for (const std::size_t keySize : kKeySizes) {
        const std::string key = randomBytes(keySize, 4);
        for (std::size_t size = 1; size <= 65; ++size) {
            std::string in = randomBytes(size, 5);
            in.resize(std::max<std::size_t>(size, 16));
            for (const int mode : {AES_ENCRYPT, AES_DECRYPT}) {
                const AES_KEY schedule = deprecatedKey(mode, key);
                std::string expected((size + 15) / 16 * 16, '\0');
                (mode == AES_ENCRYPT ? AES_encrypt : AES_decrypt)(bytes(in), mutableBytes(expected),
                                                                  &schedule);
                EXPECT_EQ(toHex(ourBlock(mode, in.substr(0, size), key)), toHex(expected)) << size;
            }
        }
    }
}

TEST(CryptPeers, TheBuiltInKeyComesFromTheTables) {
    std::string key;
    std::string iv;
    for (std::size_t i = 0; i < 64; i += 2) {
        key += static_cast<char>(kAesKeyTable[i] + (i == 2 ? 1 : 0));
        iv += static_cast<char>(kAesIvTable[i] - (i == 8 ? 2 : 0));
    }
    const std::string text = "which key is it?!";
    EXPECT_EQ(taken(U::AESEncrypt(text.c_str())),
              toHex(deprecatedCbc(AES_ENCRYPT, text, key, iv, false)));
}

TEST(CryptPeers, TheProgramReadsOursAndWeRead) {
    const std::string iv = randomBytes(16, 6);
    const std::string data = randomBytes(4096, 7);
    for (const std::size_t keySize : kKeySizes) {
        const std::string key = randomBytes(keySize, 8);
        const std::string options =
            "-aes-" + std::to_string(8 * keySize) + "-cbc -K " + toHex(key) + " -iv " + toHex(iv);
        const std::string cipher = ourCbc(AES_ENCRYPT, data, key, iv);
        EXPECT_EQ(opensslEnc("-d " + options, cipher), data);
        EXPECT_EQ(ourCbc(AES_DECRYPT, opensslEnc("-e " + options, data), key, iv), data);
    }
    const std::string key = randomBytes(8, 9);
    des_ctx schedule;
    ades_key(&schedule, bytes(key));
    std::string blocks = data;
    ades_enc(&schedule, mutableBytes(blocks), 512);
    EXPECT_EQ(opensslEnc(kLegacyDes + ("-d -K " + toHex(key)), blocks), data);
    EXPECT_EQ(opensslEnc(kLegacyDes + ("-e -K " + toHex(key)), data), blocks);
}

TEST(CryptPeers, TheProgramReadsStreams) {
    const std::string key = randomBytes(8, 10);
    std::string text = randomBytes(1001, 11);
    des_ctx schedule;
    ades_key(&schedule, bytes(key));
    const TempDir folder;
    std::FILE* const file = std::fopen(folder.path("stream").c_str(), "wb");
    des_writer writer(file, &schedule);
    for (const char byte : text) writer.put(static_cast<unsigned char>(byte));
    writer.flush();
    std::fclose(file);
    EXPECT_EQ(opensslEnc(kLegacyDes + ("-d -K " + toHex(key)), readFile(folder.path("stream"))),
              text + std::string(7, ' '));
}

TEST(CryptPeers, DesIsTheOtherLibrarys) {
    for (unsigned seed = 0; seed < 300; ++seed) {
        const std::string key = randomBytes(8, seed);
        std::string data = randomBytes(8 * (seed + 1), seed + 1000);
        DES_cblock block;
        std::memcpy(block, key.data(), sizeof block);
        DES_key_schedule theirs;
        DES_set_key_unchecked(&block, &theirs);
        std::string expected = data;
        for (std::size_t at = 0; at < data.size(); at += 8) {
            auto* const each = reinterpret_cast<DES_cblock*>(expected.data() + at);
            DES_ecb_encrypt(each, each, &theirs, seed % 2 ? DES_ENCRYPT : DES_DECRYPT);
        }
        des_ctx ours;
        ades_key(&ours, bytes(key));
        (seed % 2 ? ades_enc : ades_dec)(&ours, mutableBytes(data), static_cast<int>(seed + 1));
        EXPECT_EQ(data, expected) << seed;
    }
}

TEST(CryptPeers, Base64IsWhatTheFilterWrites) {
    for (std::size_t size = 0; size < 1200; ++size) {
        const std::string data = randomBytes(size, static_cast<unsigned>(size));
        ASSERT_EQ(ourEncoded(data), chainEncoded(data));
        ASSERT_EQ(taken(U::Base64Decode(ourEncoded(data).c_str())), data);
    }
}

TEST(CryptPeers, Base64IsReadAsTheFilterReads) {
    std::mt19937 random(12);
    const std::string strange = "\n\n\n===\r \t-A/+z@\x80\xFF";
    for (int run = 0; run < 20000; ++run) {
        std::string text = chainEncoded(randomBytes(random() % (run % 100 ? 200 : 3000), 13));
        for (auto changes = random() % 4; changes > 0; --changes) {
            const std::size_t at = random() % (text.size() + 1);
            const char c = strange[random() % strange.size()];
            switch (random() % 3) {
                case 0:
                    text.insert(at, 1, c);
                    break;
                case 1:
                    text.replace(at, 1, 1, c);
                    break;
                default:
                    text.erase(at, random() % 2 ? 1 : std::string::npos);
            }
        }
        ASSERT_EQ(taken(U::Base64Decode(text.c_str())), chainDecoded(text)) << text;
    }
}
