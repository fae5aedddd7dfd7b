#include "zbasic/zdes.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <memory>

#include "crypt/vectors.h"
#include "support/temp_dir.h"

namespace {

struct CloseFile {
    void operator()(std::FILE* file) const { std::fclose(file); }
};
using File = std::unique_ptr<std::FILE, CloseFile>;

des_ctx scheduleOf(const std::string& keyDigits) {
    des_ctx schedule;
    ades_key(&schedule, bytes(fromHex(keyDigits)));
    return schedule;
}

using Transform = void (*)(des_ctx*, unsigned char*, int);

std::string transformed(Transform transform, des_ctx schedule, std::string data) {
    transform(&schedule, reinterpret_cast<unsigned char*>(data.data()),
              static_cast<int>(data.size() / 8));
    return data;
}

std::string allOf(des_reader& reader) {
    std::string data;
    for (int byte; (byte = reader.get()) != -1;) data += static_cast<char>(byte);
    return data;
}

constexpr char kKey[] = "133457799BBCDFF1";

}  // namespace

TEST(Des, GivesThePublishedAnswers) {
    for (const auto& vector : readVectors("des_known_answers.txt")) {
        const des_ctx schedule = scheduleOf(vector[0]);
        EXPECT_EQ(toHex(transformed(ades_enc, schedule, fromHex(vector[1]))), vector[2]);
        EXPECT_EQ(toHex(transformed(ades_dec, schedule, fromHex(vector[2]))), vector[1]);
    }
}

TEST(Des, KeepsTheReversedScheduleBehindTheOther) {
    const des_ctx schedule = scheduleOf(kKey);
    for (std::size_t word = 0; word < 32; ++word) {
        const std::size_t round = word / 2;
        EXPECT_EQ(schedule.words[32 + word], schedule.words[2 * (15 - round) + word % 2]);
        EXPECT_EQ(schedule.words[word] & 0xC0C0C0C0, 0u) << "six bits a byte";
    }
    // The first subkey by hand: 000110 110000 001011 101111 111111 000111 000001 110010.
    EXPECT_EQ(schedule.words[0], 0x060B3F01u);
    EXPECT_EQ(schedule.words[1], 0x302F0732u);
}

TEST(Des, IgnoresTheParityOfTheKey) {
    const des_ctx other = scheduleOf("123556789ABDDEF0");
    const std::string text = randomBytes(64, 1);
    EXPECT_EQ(transformed(ades_enc, scheduleOf(kKey), text), transformed(ades_enc, other, text));
}

// NIST SP 800-67 section 3.3.2: such keys undo themselves or each other.
TEST(Des, HasTheKnownWeakKeys) {
    const char* const pairs[][2] = {
        {"0101010101010101", "0101010101010101"}, {"FEFEFEFEFEFEFEFE", "FEFEFEFEFEFEFEFE"},
        {"E0E0E0E0F1F1F1F1", "E0E0E0E0F1F1F1F1"}, {"1F1F1F1F0E0E0E0E", "1F1F1F1F0E0E0E0E"},
        {"011F011F010E010E", "1F011F010E010E01"}, {"01E001E001F101F1", "E001E001F101F101"},
        {"01FE01FE01FE01FE", "FE01FE01FE01FE01"}, {"1FE01FE00EF10EF1", "E01FE01FF10EF10E"},
        {"1FFE1FFE0EFE0EFE", "FE1FFE1FFE0EFE0E"}, {"E0FEE0FEF1FEF1FE", "FEE0FEE0FEF1FEF1"},
    };
    const std::string text = randomBytes(64, 2);
    for (const auto& [first, second] : pairs) {
        const std::string cipher = transformed(ades_enc, scheduleOf(first), text);
        EXPECT_EQ(transformed(ades_enc, scheduleOf(second), cipher), text) << first;
        EXPECT_EQ(transformed(ades_dec, scheduleOf(second), text), cipher) << first;
    }
}

TEST(Des, TreatsManyBlocksAsSingleOnes) {
    const des_ctx schedule = scheduleOf(kKey);
    for (const std::size_t blocks : {1u, 2u, 127u, 128u, 129u, 255u, 256u, 300u, 600u}) {
        const std::string text = randomBytes(8 * blocks, static_cast<unsigned>(blocks));
        std::string single;
        for (std::size_t at = 0; at < text.size(); at += 8) {
            single += transformed(ades_enc, schedule, text.substr(at, 8));
        }
        EXPECT_EQ(transformed(ades_enc, schedule, text), single) << blocks;
        EXPECT_EQ(transformed(ades_dec, schedule, single), text) << blocks;
    }
}

TEST(Des, DoesNothingForNoBlocks) {
    des_ctx schedule = scheduleOf(kKey);
    for (const int blocks : {0, -1, -2147483647 - 1}) {
        ades_enc(&schedule, nullptr, blocks);
        ades_dec(&schedule, nullptr, blocks);
    }
}

TEST(DesStream, FillsTheLastBlockWithSpaces) {
    des_ctx schedule = scheduleOf(kKey);
    struct Case {
        const char* why;
        std::string text;
        std::string read;
    };
    const Case cases[] = {
        {"nothing", "", ""},
        {"part of a block", "abc", "abc     "},
        {"a whole block", "abcdefgh", "abcdefgh"},
        {"the next begun", "abcdefgh\xFF", "abcdefgh\xFF       "},
    };
    for (const auto& [why, text, read] : cases) {
        SCOPED_TRACE(why);
        const File file(std::tmpfile());
        des_writer writer(file.get(), &schedule);
        EXPECT_EQ(writer.put(text.c_str()), 0);
        EXPECT_EQ(std::ftell(file.get()), static_cast<long>(text.size() / 8 * 8))
            << "full blocks are in the file";
        EXPECT_EQ(writer.flush(), 0);
        EXPECT_EQ(writer.flush(), 0);
        std::rewind(file.get());
        des_reader reader(file.get(), &schedule);
        EXPECT_EQ(allOf(reader), read);
        EXPECT_EQ(reader.get(), -1);
    }
}

TEST(DesStream, ReadsNoFurtherThanItsBlock) {
    des_ctx schedule = scheduleOf(kKey);
    const File file(std::tmpfile());
    des_writer writer(file.get(), &schedule);
    for (const char c : std::string("0123456789ABCDEF")) writer.put(static_cast<unsigned char>(c));
    std::fputs("tail", file.get());
    std::rewind(file.get());
    des_reader reader(file.get(), &schedule);
    EXPECT_EQ(reader.get(), '0');
    EXPECT_EQ(std::ftell(file.get()), 8);
    des_reader copy = reader;  // goes on by itself in what it holds
    EXPECT_EQ(copy.get(), '1');
    EXPECT_EQ(reader.get(), '1');
    EXPECT_EQ(allOf(reader), "23456789ABCDEF") << "the four bytes behind are no block";
}

TEST(DesStream, ReportsAnErrorOfTheFile) {
    des_ctx schedule = scheduleOf(kKey);
    const TempDir folder;
    const File file(std::fopen(folder.write("file", "content").c_str(), "rb"));
    des_writer writer(file.get(), &schedule);
    EXPECT_EQ(writer.put("1234567"), 0);
    EXPECT_EQ(writer.put('8'), -1);
    EXPECT_EQ(writer.flush(), -1);
}
