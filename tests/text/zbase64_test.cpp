#include "zbasic/zbase64.h"

#include <gtest/gtest.h>

#include <fstream>
#include <memory>
#include <random>
#include <string>

#include "text/base64core.h"

namespace {

struct Answer {
    bool isDone;
    std::string bytes;  // `outLen` of them; nothing when the answer was no
    unsigned long length;

    bool operator==(const Answer&) const = default;
};

std::ostream& operator<<(std::ostream& stream, const Answer& answer) {
    return stream << answer.isDone << " \"" << answer.bytes << "\" " << answer.length;
}

template <typename Pointer>
Answer run(bool (*codec)(Pointer, unsigned long, char*&, unsigned long&), std::string in) {
    char* out = nullptr;
    unsigned long length = 0;
    const bool isDone = codec(in.data(), static_cast<unsigned long>(in.size()), out, length);
    const std::unique_ptr<char[]> owner(out);
    EXPECT_NE(out, nullptr);
    if (!isDone) return {false, "", length};
    EXPECT_EQ(out[length], '\0');
    return {true, {out, length}, length};
}

Answer yes(const std::string& bytes) {
    return {true, bytes, static_cast<unsigned long>(bytes.size())};
}
Answer no(unsigned long length) { return {false, "", length}; }

std::string unpadded(const std::string& text) {
    return text.substr(0, text.find_last_not_of('=') + 1);
}

void checkBothForms(const std::string& bytes, const std::string& padded) {
    EXPECT_EQ(run(Zel_NewBase64Encode, bytes), yes(padded));
    EXPECT_EQ(run(Zel_NewBase64Decode, padded), yes(bytes));
    EXPECT_EQ(run(Zel_OldBase64Encode, bytes), yes(unpadded(padded)));
    EXPECT_EQ(run(Zel_OldBase64Decode, unpadded(padded)), yes(bytes));
}

// RFC 4648 section 10, and by hand one of the alphabet's last two.
const std::pair<const char*, const char*> kVectors[] = {
    {"", ""},
    {"f", "Zg=="},
    {"fo", "Zm8="},
    {"foo", "Zm9v"},
    {"foob", "Zm9vYg=="},
    {"fooba", "Zm9vYmE="},
    {"foobar", "Zm9vYmFy"},
    {"\xFB\xFF\xBF", "+/+/"},
};

TEST(Base64, HasTheAnswersOfTheStandard) {
    for (const auto& [bytes, padded] : kVectors) checkBothForms(bytes, padded);
}

TEST(Base64, HasTheAnswersOfOpenSSL) {
    std::ifstream file(ZBASIC_FIXTURES "/base64.txt");
    std::string line, hex, padded;
    std::getline(file, line);
    int count = 0;
    for (; file >> hex >> padded; ++count) {
        std::string bytes;
        for (std::size_t i = 0; i < hex.size(); i += 2) {
            bytes += static_cast<char>(std::stoi(hex.substr(i, 2), nullptr, 16));
        }
        checkBothForms(bytes, padded);
    }
    EXPECT_EQ(count, 32);
}

struct DecodeCase {
    const char* why;
    const char* text;
    Answer expectedOld;
    Answer expectedNew;
};

const DecodeCase kDecodes[] = {
    {"padding", "TWE=", no(3), yes("Ma")},
    {"no padding", "TWE", yes("Ma"), no(0)},
    {"no padding behind a group", "TWFuTQ", yes("ManM"), no(3)},
    {"a single character behind", "TWFuT", yes("Man"), yes("Man")},
    {"it is not looked at", "TWFu!", yes("Man"), yes("Man")},
    {"the old form takes padding for it", "TWFu=", yes("Man"), no(2)},
    {"three for a single character", "T===", no(3), yes("")},
    {"nothing but padding", "====", no(3), no(0)},
    {"padding shorter than a group", "=", yes(""), no(0)},
    {"a group of padding", "TWFu====", no(6), no(2)},
    {"more padding than bytes", "T=======", no(6), no(0)},
    {"padding in the middle", "TQ==TWFu", no(6), no(6)},
    {"padding, then a character", "TW=u", no(3), no(3)},
    {"line feed", "TWFu\nTWE", no(6), no(6)},
    {"blank", "TW u", no(3), no(3)},
    {"the alphabet for file names", "-_-_", no(3), no(3)},
    {"byte above 127", "TWF\xF5", no(3), no(3)},
    {"bits behind the last byte", "TR==", no(3), yes("M")},
    {"stranger in the short last group", "TWFuT!E", no(5), no(3)},
};

TEST(Base64, DecodesWhatEachFormAllows) {
    for (const auto& [why, text, expectedOld, expectedNew] : kDecodes) {
        SCOPED_TRACE(why);
        EXPECT_EQ(run(Zel_OldBase64Decode, text), expectedOld);
        EXPECT_EQ(run(Zel_NewBase64Decode, text), expectedNew);
    }
}

// Nothing is read of such a text, nor is there one.
TEST(Base64, RefusesTextsThatAreTooLongForTheirLength) {
    char bytes[1] = {};
    char* out = nullptr;
    unsigned long length = 1;
    EXPECT_FALSE(Zel_OldBase64Encode(bytes, 0xC0000000, out, length));
    EXPECT_EQ(std::string_view(std::unique_ptr<char[]>(out).get()), "");
    EXPECT_EQ(length, 0U);
    length = 1;
    EXPECT_FALSE(Zel_NewBase64Encode(bytes, 0xBFFFFFFE, out, length));
    EXPECT_EQ(std::string_view(std::unique_ptr<char[]>(out).get()), "");
    EXPECT_EQ(length, 0U);
    static_assert(base64::encodedSize(0xBFFFFFFF) == 0xFFFFFFFF);
    static_assert(base64::decodedSize(0xFFFFFFFF) == 0xBFFFFFFF);
}

TEST(Base64, TakesNullForNothing) {
    char* out = nullptr;
    unsigned long length = 1;
    for (const auto codec : {Zel_NewBase64Encode, Zel_NewBase64Decode}) {
        EXPECT_TRUE(codec(nullptr, 0, out, length));
        EXPECT_EQ(std::string_view(std::unique_ptr<char[]>(out).get()), "");
        EXPECT_EQ(length, 0U);
    }
}

std::string randomBytes(std::mt19937& random, std::size_t size) {
    std::string bytes(size, '\0');
    for (char& c : bytes) c = static_cast<char>(random());
    return bytes;
}

std::string decodedBy(char* (*decode)(const char*, std::size_t, char*), const std::string& text,
                      bool& isDone) {
    std::string bytes(base64::decodedSize(text.size()), '\0');
    isDone = decode(text.data(), text.size(), bytes.data()) != nullptr;
    return bytes;
}

TEST(Base64, DecodesWhatItEncodedOnEveryProcessor) {
    std::mt19937 random(1);
    for (std::size_t size = 0; size < 200; ++size) {
        const std::string bytes = randomBytes(random, size);
        std::string text(base64::encodedSize(size), '\0'), plain = text;
        EXPECT_EQ(base64::encode(bytes.data(), size, text.data()), text.data() + text.size());
        EXPECT_EQ(base64::encodePlain(bytes.data(), size, plain.data()),
                  plain.data() + plain.size());
        EXPECT_EQ(text, plain);
        bool isDone = false;
        EXPECT_EQ(decodedBy(base64::decode, text, isDone), bytes);
        EXPECT_TRUE(isDone);
        EXPECT_EQ(decodedBy(base64::decodePlain, text, isDone), bytes);
        EXPECT_TRUE(isDone);
    }
}

TEST(Base64, TellsEveryStrangerInEveryPlace) {
    const std::string alphabet = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    for (std::size_t place = 0; place < alphabet.size(); ++place) {
        for (int byte = 0; byte < 256; ++byte) {
            std::string text = alphabet;
            text[place] = static_cast<char>(byte);
            const bool isKnown = alphabet.find(text[place]) != std::string::npos;
            bool isDone = false, isDonePlain = false;
            const std::string bytes = decodedBy(base64::decode, text, isDone);
            EXPECT_EQ(isDone, isKnown) << byte << " at " << place;
            EXPECT_EQ(bytes, decodedBy(base64::decodePlain, text, isDonePlain));
            EXPECT_EQ(isDonePlain, isKnown);
        }
    }
}

}  // namespace
