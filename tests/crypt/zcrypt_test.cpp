#include "zbasic/zcrypt.h"

#include <gtest/gtest.h>

#include <climits>
#include <cstring>

#include "crypt/vectors.h"
#include "zbasic/zbase64.h"

using namespace std::string_literals;

namespace {

using U = ZelCryptoUtils;

std::string hexEncoded(const std::string& data) {
    return taken(U::HexEncode(bytes(data), static_cast<int>(data.size())));
}

std::string hexDecoded(const std::string& text) { return taken(U::HexDecode(text.c_str())); }

std::string aes(bool isEncryption, const std::string& in, const std::string& key,
                const std::string& iv) {
    const int size = static_cast<int>(in.size());
    const int bits = static_cast<int>(8 * key.size());
    return taken(isEncryption ? U::AESEncrypt(bytes(in), size, bytes(key), bits, bytes(iv))
                              : U::AESDecrypt(bytes(in), size, bytes(key), bits, bytes(iv)));
}

std::string aesBlock(bool isEncryption, const std::string& in, const std::string& key) {
    const int size = static_cast<int>(in.size());
    const int keySize = static_cast<int>(key.size());
    return taken(isEncryption ? U::AESEncrypt(bytes(in), size, bytes(key), keySize)
                              : U::AESDecrypt(bytes(in), size, bytes(key), keySize));
}

std::string legacyEncrypted(const std::string& text) {
    std::string out((text.size() + 7) / 8 * 16 + 1, '?');
    Zel_Encrypt(text.c_str(), out.data());
    EXPECT_EQ(out.back(), '\0');
    out.resize(out.find('\0'));
    return out;
}

std::string legacyDecrypted(std::string hex) {
    unsigned char* out = nullptr;
    Zel_Decrypt(hex.data(), out);
    std::string text(reinterpret_cast<char*>(out), hex.size() / 2);
    EXPECT_EQ(out[hex.size() / 2], 0);
    U::Free(out);
    return text;
}

struct Typed {
    std::string text;
    long result;
};

template <class Call>
Typed typed(Call call) {
    char* out = nullptr;
    const long result = call(out);
    Typed answer{out ? std::string(out) : "<null>", result};
    U::Free(out);
    return answer;
}

std::string padded(const std::string& base64) {
    char* out = nullptr;
    unsigned long size = 0;
    Zel_NewBase64Encode(base64.data(), static_cast<unsigned long>(base64.size()), out, size);
    std::string text(out, size);
    delete[] out;
    return text;
}

const std::string kKey16 = "0123456789abcdef";
const std::string kIv(16, '\x11');

}  // namespace

TEST(Hex, EncodesAndDecodes) {
    EXPECT_EQ(hexEncoded("\x00\xAB\xFF"s), "00ABFF");
    EXPECT_EQ(hexDecoded("00abFF"), "\x00\xAB\xFF"s);
    for (std::size_t size = 0; size < 100; ++size) {  // around the steps of 16
        const std::string data = randomBytes(size, 1);
        EXPECT_EQ(hexEncoded(data), toHex(data));
        EXPECT_EQ(hexDecoded(toHex(data)), data);
    }
}

TEST(Hex, RefusesEveryCharacterThatIsNoDigitWhereverItStands) {
    for (std::size_t size : {2u, 32u, 70u}) {
        for (int c = 1; c <= 0xFF; ++c) {
            const bool isDigit = std::strchr("0123456789abcdefABCDEF", c) != nullptr;
            for (std::size_t at : {std::size_t{0}, size / 2, size - 1}) {
                std::string text(size, '7');
                text[at] = static_cast<char>(c);
                EXPECT_EQ(hexDecoded(text) != "<-1>", isDigit) << c << " at " << at;
            }
        }
    }
}

TEST(Base64Lines, HaveALineFeedBehind64CharactersAndAtTheEnd) {
    const auto encoded = [](const std::string& data) {
        return taken(U::Base64Encode(bytes(data), static_cast<int>(data.size())));
    };
    const std::string line = std::string(64, 'A') + "\n";
    EXPECT_EQ(encoded(""), "");
    EXPECT_EQ(encoded("M"), "TQ==\n");
    EXPECT_EQ(encoded("Ma"), "TWE=\n");
    EXPECT_EQ(encoded(std::string(48, '\0')), line);
    EXPECT_EQ(encoded(std::string(97, '\0')), line + line + "AA==\n");
}

TEST(Base64Lines, AreReadAsTheFilterDoes) {
    struct Case {
        const char* why;
        std::string text;
        std::string expected;
    };
    const Case cases[] = {
        {"one line", "TWFu\n", "Man"},
        {"padding", "TWE=\n", "Ma"},
        {"no text", "", ""},
        {"no line feed: nothing, and no error", "TWFu", ""},
        {"no line feed behind the last line", std::string(64, 'A') + "\nTWFu",
         std::string(48, '\0') + "Man"},
        {"carriage returns", "TWFu\r\nTWFu\r\n", "ManMan"},
        {"lines of another length", "TWFuTWFu\nTWFu\n", "ManManMan"},
        {"a heading before", "#!?\nTWFu\n", "Man"},
    };
    for (const auto& [why, text, expected] : cases) {
        EXPECT_EQ(taken(U::Base64Decode(text.c_str())), expected) << why;
    }
}

TEST(Aes, GivesThePublishedAnswers) {
    for (const auto& vector : readVectors("aes_known_answers.txt")) {
        const std::string key = fromHex(vector[1]);
        const std::string iv = fromHex(vector[2]);
        for (const bool isEncryption : {true, false}) {
            const std::string& in = vector[isEncryption ? 3 : 4];
            const std::string& out = vector[isEncryption ? 4 : 3];
            EXPECT_EQ(toHex(vector[0] == "CBC" ? aes(isEncryption, fromHex(in), key, iv)
                                               : aesBlock(isEncryption, fromHex(in), key)),
                      out);
        }
    }
}

TEST(Aes, FillsUpWithNulBytes) {
    const std::string text = randomBytes(40, 2);
    const std::string whole = aes(true, text + std::string(8, '\0'), kKey16, kIv);
    EXPECT_EQ(aes(true, text, kKey16, kIv), whole);
    EXPECT_EQ(aes(true, "", kKey16, kIv), "");
    EXPECT_EQ(aes(false, "", kKey16, kIv), "");

    // A deciphered part of a block keeps its length.
    const std::string part = aes(false, whole.substr(0, 20), kKey16, kIv);
    const std::string fullPart =
        aes(false, whole.substr(0, 20) + std::string(12, '\0'), kKey16, kIv);
    EXPECT_EQ(part, fullPart.substr(0, 20) + std::string(12, '\0'));
}

TEST(Aes, TransformsASingleBlockAndNoMore) {
    const std::string text = randomBytes(40, 3);
    for (const bool isEncryption : {true, false}) {
        EXPECT_EQ(aesBlock(isEncryption, "", kKey16), "");
        EXPECT_EQ(aesBlock(isEncryption, text.substr(0, 5), kKey16),
                  aesBlock(isEncryption, text.substr(0, 5) + std::string(11, '\0'), kKey16));
        EXPECT_EQ(aesBlock(isEncryption, text, kKey16),
                  aesBlock(isEncryption, text.substr(0, 16), kKey16) + std::string(32, '\0'));
    }
}

TEST(Aes, LeavesTheIvAlone) {
    std::string iv = kIv;
    U::Free(U::AESEncrypt(bytes(kKey16), 16, bytes(kKey16), 128, bytes(iv)).first);
    EXPECT_EQ(iv, kIv);
}

TEST(BuiltInKey, KeepsTextsWithoutNul) {
    for (std::size_t size : {0u, 1u, 15u, 16u, 17u, 100u}) {
        const std::string text(size, 'x');
        const std::string hex = taken(U::AESEncrypt(text.c_str()));
        const std::size_t whole = (size + 15) / 16 * 16;
        EXPECT_EQ(hex.size(), 2 * whole);
        EXPECT_EQ(hex.find_first_not_of("0123456789ABCDEF"), std::string::npos);
        EXPECT_EQ(taken(U::AESDecrypt(hex.c_str())), text + std::string(whole - size, '\0'));
    }
}

TEST(Crypto, RefusesBadArguments) {
    const auto* const data = bytes(kKey16);
    const unsigned char* const none = nullptr;
    const std::string invalid = "<-2>";
    const std::string failed = "<-1>";
    struct Case {
        const char* why;
        std::string result;
        std::string expected;
    };
    const Case cases[] = {
        {"hex of null", taken(U::HexEncode(none, 1)), invalid},
        {"hex of a negative length", taken(U::HexEncode(data, -1)), invalid},
        {"hex of more than a length can tell", taken(U::HexEncode(data, INT_MAX)), failed},
        {"just too long", taken(U::HexEncode(data, INT_MAX / 2 + 1)), failed},
        {"hex digits null", taken(U::HexDecode(nullptr)), invalid},
        {"an odd number of digits", hexDecoded("abc"), invalid},
        {"no digit", hexDecoded("0g"), failed},
        {"base64 of null", taken(U::Base64Encode(none, 1)), invalid},
        {"base64 of a negative length", taken(U::Base64Encode(data, -1)), invalid},
        {"base64 too long", taken(U::Base64Encode(data, INT_MAX)), failed},
        {"base64 text null", taken(U::Base64Decode(nullptr)), invalid},
        {"AES of null", taken(U::AESEncrypt(none, 0, data, 128, data)), invalid},
        {"null key", taken(U::AESEncrypt(data, 16, none, 128, data)), invalid},
        {"null IV", taken(U::AESDecrypt(data, 16, data, 128, none)), invalid},
        {"negative length", taken(U::AESDecrypt(data, -1, data, 128, data)), invalid},
        {"negative key size", taken(U::AESDecrypt(data, 16, data, -128, data)), invalid},
        {"bytes for bits", taken(U::AESEncrypt(data, 16, data, 16, data)), invalid},
        {"not whole bytes", taken(U::AESEncrypt(data, 16, data, 129, data)), invalid},
        {"too long", taken(U::AESEncrypt(data, INT_MAX, data, 128, data)), failed},
        {"single block of null", taken(U::AESEncrypt(none, 16, data, 16)), invalid},
        {"its key null", taken(U::AESDecrypt(data, 16, none, 16)), invalid},
        {"its length negative", taken(U::AESDecrypt(data, -16, data, 16)), invalid},
        {"its key size negative", taken(U::AESEncrypt(data, 16, data, -16)), invalid},
        {"its length too long", taken(U::AESDecrypt(data, INT_MAX, data, 16)), failed},
        {"text null", taken(U::AESEncrypt(nullptr)), invalid},
        {"hex text null", taken(U::AESDecrypt(nullptr)), invalid},
        {"hex text odd", taken(U::AESDecrypt("123")), invalid},
        {"hex text with a line feed", taken(U::AESDecrypt("0\n")), failed},
    };
    for (const auto& [why, result, expected] : cases) EXPECT_EQ(result, expected) << why;
    for (const int keySize : {0, 1, 8, 15, 17, 23, 25, 31, 33}) {
        const std::string key(40, 'k');
        EXPECT_EQ(taken(U::AESEncrypt(data, 16, bytes(key), keySize)), invalid) << keySize;
        EXPECT_EQ(taken(U::AESDecrypt(data, 16, bytes(key), 8 * keySize, data)), invalid)
            << keySize;
    }
    U::Free(nullptr);
}

TEST(LegacyText, IsFilledUpWithCharactersOfItself) {
    struct Case {
        std::string text;
        std::string
            enciphered;  // character 17k modulo the length stands at place k behind the text
    };
    const Case cases[] = {
        {"", ""},
        {"x", "xxxxxxxx"},
        {"abc", "abcacbac"},
        {"abcde", "abcdeace"},
        {"abcdefg", "abcdefga"},
        {"abcdefgh", "abcdefgh"},
        {"abcdefghijklm", "abcdefghijklmaei"},
        {"\xE4\xF6\xFC", "\xE4\xF6\xFC\xE4\xFC\xF6\xE4\xFC"},
    };
    for (const auto& [text, enciphered] : cases) {
        EXPECT_EQ(legacyEncrypted(text), legacyEncrypted(enciphered)) << text;
        EXPECT_EQ(legacyDecrypted(legacyEncrypted(text)), enciphered) << text;
    }
    const std::string digits = legacyEncrypted("abcdefgh");
    EXPECT_EQ(digits.find_first_not_of("0123456789abcdef"), std::string::npos);
    // Block by block, without chaining.
    EXPECT_EQ(legacyEncrypted("abcdefghabcdefgh"), digits + digits);
}

TEST(LegacyText, IsReadWithoutAnyCheck) {
    const std::string digits = legacyEncrypted("abcdefgh");
    EXPECT_EQ(legacyDecrypted(digits + "4"), "abcdefgh");
    // Behind the last whole block bytes stay as they are.
    EXPECT_EQ(legacyDecrypted(digits + "41 A-11gzz"), "abcdefgh\x41\x0A\xFF\x01\x00"s);
    char none[1] = "";
    Zel_Encrypt(nullptr, none);
    EXPECT_EQ(none[0], '\0');
    unsigned char* out = nullptr;
    Zel_Decrypt(nullptr, out);
    EXPECT_EQ(*out, 0);
    U::Free(out);
}

TEST(Encryption, ChoosesTheSchemeByType) {
    ZelEncryption& encryption = ZelEncryption::Instance();
    EXPECT_EQ(&encryption, &ZelEncryption::Instance());
    char text[] = "nine char";
    std::string old = legacyEncrypted(text);
    std::string aesText = taken(U::AESEncrypt(text));
    struct Case {
        const char* why;
        long type;
        long maxLength;
        std::string expected;
    };
    const Case cases[] = {
        {"DES", 0, -1, old},
        {"DES, too", 1, -1, old},
        {"a negative type is below 2", -5, -1, old},
        {"cut", 0, 10, old.substr(0, 10)},
        {"cut to nothing", 1, 0, ""},
        {"room enough", 0, 32, old},
        {"AES", 2, -1, aesText},
        {"any higher type", 99, -1, aesText},
        {"AES is not cut", 2, 10, aesText},
    };
    for (const Case& each : cases) {
        SCOPED_TRACE(each.why);
        const Typed given = typed(
            [&](char*& out) { return encryption.Encrypt(each.type, text, out, each.maxLength); });
        EXPECT_EQ(given.text, each.expected);
        EXPECT_EQ(given.result, static_cast<long>(each.expected.size()));
        encryption.SetEncryptionType(each.type);
        const Typed byField =
            typed([&](char*& out) { return encryption.Encrypt(text, out, each.maxLength); });
        EXPECT_EQ(byField.text, each.expected);
    }
    const Typed byAes = typed([&](char*& out) { return encryption.Decrypt(aesText.data(), out); });
    EXPECT_EQ(byAes.text, text);
    EXPECT_EQ(byAes.result, 16);
    const Typed byDes = typed([&](char*& out) { return encryption.Decrypt(1, old.data(), out); });
    EXPECT_EQ(byDes.text, "nine charnrahc e");
    EXPECT_EQ(byDes.result, 16);
    char odd[] = "123";
    EXPECT_EQ(typed([&](char*& out) { return encryption.Decrypt(odd, out); }).text, "<null>");
    encryption.SetEncryptionType(0);
}

TEST(PasswordForApp, TakesThePaddingOff) {
    const auto decrypted = [](const std::string& block, std::size_t cut = 16) {
        const std::string cipher = aesBlock(true, block, kKey16);
        const SV::String text(padded(cipher.substr(0, cut)));
        const SV::String password = Zel_DecryptPasswordForAPP(text, SV::String(kKey16));
        return std::string(password.begin(), password.end());
    };
    const std::string fullBlocks = "sixteen letters!and more of them";
    EXPECT_EQ(decrypted("secret" + std::string(10, '\x0A')), "secret");
    EXPECT_EQ(decrypted("fifteen letters\x01"), "fifteen letters");
    EXPECT_EQ(decrypted(std::string(16, '\x10')), "");
    // Made by `openssl enc -aes-128-ecb`.
    EXPECT_EQ(Zel_DecryptPasswordForAPP("iNo+4RE7nEnpk338CYGhcw==", SV::String(kKey16)), "secret");
    // Relied on by callers: only the last byte is looked at.
    EXPECT_EQ(decrypted("secret no padding\x02"s.substr(2, 15) + "\x02"), "cret no paddin");
    EXPECT_EQ(decrypted("fifteen letters\0"s), "fifteen letters\0"s);
    EXPECT_EQ(decrypted("fifteen letters\x11"), "") << "longer than the cipher text";
    EXPECT_EQ(decrypted("fifteen letters\xFF"), "");
    EXPECT_EQ(decrypted(""), "");
    EXPECT_EQ(decrypted(fullBlocks, 32), fullBlocks.substr(0, 16) + std::string(16, '\0'));
}

TEST(PasswordForApp, IsEmptyForWhatCannotBeDecoded) {
    const SV::String good(padded(aesBlock(true, "secret" + std::string(10, '\x0A'), kKey16)));
    EXPECT_EQ(Zel_DecryptPasswordForAPP(good, SV::String(kKey16)), "secret");
    for (const char* text : {"", "====", "a", "not base64", "TWFu\n", "TW=u"}) {
        EXPECT_EQ(Zel_DecryptPasswordForAPP(text, SV::String(kKey16)), "") << text;
    }
    for (const std::size_t keySize : {0u, 1u, 15u, 17u, 33u}) {
        EXPECT_EQ(Zel_DecryptPasswordForAPP(good, SV::String(keySize, '0')), "") << keySize;
    }
}
