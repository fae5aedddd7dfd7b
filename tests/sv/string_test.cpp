#include "sv/string.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <map>
#include <sstream>
#include <string>
#include <thread>
#include <unordered_set>

using SV::String;

namespace {

// Lengths around the end of the inline text.
const std::size_t kSizes[] = {0, 1, 22, 23, 24, 25, 100, 5000};

}  // namespace

TEST(SvString, HoldsTheTextWhateverItsLength) {
    for (const std::size_t size : kSizes) {
        SCOPED_TRACE(size);
        std::string expected;
        for (std::size_t i = 0; i < size; ++i) expected += static_cast<char>(i * 7);
        const String text(expected.data(), expected.size());
        EXPECT_EQ(std::string(text.begin(), text.end()), expected);
        EXPECT_EQ(text.size(), size);
        EXPECT_EQ(text.c_str()[size], '\0');
        EXPECT_EQ(String(text), text);
        EXPECT_EQ(String(size, 'x'), std::string_view(std::string(size, 'x')));
    }
    EXPECT_TRUE(String(static_cast<const char*>(nullptr)).empty());
}

TEST(SvString, CopiesOfLongTextsShareUntilOneIsChanged) {
    const String original(100, 'a');
    String copy(original);
    EXPECT_EQ(copy.data(), original.data());
    copy += 'b';
    EXPECT_EQ(original, std::string_view(std::string(100, 'a')));
    EXPECT_EQ(copy, std::string_view(std::string(100, 'a') + "b"));

    String cleared(original);
    cleared.clear();
    EXPECT_EQ(original.size(), 100u);
    String assigned(original);
    assigned.assign("short", 5);
    EXPECT_EQ(original.size(), 100u);
    EXPECT_EQ(assigned, "short");
}

TEST(SvString, AppendsPiecesAsTheStandardStringDoes) {
    for (const std::size_t first : kSizes) {
        for (const std::size_t second : kSizes) {
            SCOPED_TRACE(::testing::Message() << first << "+" << second);
            std::string expected(first, 'a');
            String text(expected.data(), first);
            const std::string piece(second, 'b');
            text.append(piece.data(), second);
            expected += piece;
            EXPECT_EQ(text, std::string_view(expected));
            text += text;  // its own text may be the source
            EXPECT_EQ(text, std::string_view(expected + expected));
        }
    }
}

TEST(SvString, AppendsPartsOfItselfWhileItGrows) {
    std::string expected = "0123456789";
    String text(expected.data(), expected.size());
    while (expected.size() < 100'000) {
        const std::size_t start = expected.size() / 3;
        const std::size_t size = expected.size() - start;
        text.append(text.data() + start, size);
        expected.append(std::string(expected, start, size));
        ASSERT_EQ(text, std::string_view(expected));
        text += text.data()[1];
        expected += expected[1];
    }
    EXPECT_EQ(text, std::string_view(expected));
}

TEST(SvString, AppendsInPlaceAgainWhenItsCopiesAreGone) {
    String text(100, 'a');
    text.reserve(1000);
    const char* const place = text.data();
    {
        String copy(text);
        EXPECT_EQ(copy.data(), place);
        copy += 'b';
        EXPECT_NE(copy.data(), place);
    }
    text += 'c';
    EXPECT_EQ(text.data(), place);
    EXPECT_EQ(text.capacity(), 1000u);
    EXPECT_EQ(text, std::string_view(std::string(100, 'a') + "c"));

    const String copy(text);
    text.append(50, 'd');  // away from the copy, with the room that it had
    EXPECT_NE(text.data(), place);
    EXPECT_EQ(text.capacity(), 1000u);
    EXPECT_EQ(copy, std::string_view(std::string(100, 'a') + "c"));
}

TEST(SvString, AssignsFromItsOwnText) {
    for (const std::size_t size : kSizes) {
        std::string expected(size, 'q');
        for (std::size_t i = 0; i < size; ++i) expected[i] = static_cast<char>('a' + i % 26);
        String text(expected.data(), size);
        const String shared(text);
        text.assign(text.data() + size / 2, size - size / 2);
        EXPECT_EQ(text, std::string_view(expected).substr(size / 2));
        EXPECT_EQ(shared, std::string_view(expected));
    }
}

TEST(SvString, AssignsFromAPaddedPlace) {
    const std::string buffer(100, 'p');
    const String kOld[] = {"short", String(60, 'o'), String(60, 'o')};
    const String shared(kOld[2]);
    for (const String& old : kOld) {
        for (const std::size_t size : {0u, 1u, 22u, 23u, 24u, 70u}) {
            SCOPED_TRACE(::testing::Message() << old << " " << size);
            String text(old);
            if (&old == &kOld[1]) text += "own";  // a block that nobody shares
            text.assignPadded(buffer.data(), size);
            EXPECT_EQ(text, std::string_view(buffer).substr(0, size));
            EXPECT_EQ(text.c_str()[size], '\0');
        }
    }
    EXPECT_EQ(shared, std::string_view(std::string(60, 'o')));
}

TEST(SvString, LetsItsTextBeMadeInPlace) {
    const String kOld[] = {"short", String(60, 'o')};
    for (const String& old : kOld) {
        for (const std::size_t size : {5u, 23u, 24u, 60u, 100u}) {
            SCOPED_TRACE(::testing::Message() << old << " " << size);
            String text(old);
            const std::size_t kept = std::min(size, old.size());
            text.resizeAndOverwrite(size, [&](char* out, std::size_t room) {
                EXPECT_EQ(room, size);
                EXPECT_EQ(std::string_view(out, kept), std::string_view(old).substr(0, kept));
                std::fill_n(out, room, 'n');
                return room - 1;
            });
            EXPECT_EQ(text, std::string_view(std::string(size - 1, 'n')));
            EXPECT_EQ(text.c_str()[size - 1], '\0');
        }
    }
    EXPECT_EQ(kOld[1], std::string_view(std::string(60, 'o')));  // shared with each of them
}

TEST(SvString, ReplacesInsertsAndErases) {
    String text("model");
    EXPECT_EQ(text.insert(0, "the "), "the model");
    EXPECT_EQ(text.replace(4, 5, "graph of all the things there are"),
              "the graph of all the things there are");
    EXPECT_EQ(text.erase(9), "the graph");
    EXPECT_EQ(text.erase(100, 3), "the graph");
    EXPECT_EQ(text.insert(100, "!"), "the graph!");
    EXPECT_EQ(text.substr(4, 5), "graph");
    EXPECT_EQ(text.substr(50), "");
    EXPECT_EQ(text.replace(0, 3, text), "the graph! graph!");
}

TEST(SvString, OrdersByUnsignedBytes) {
    EXPECT_LT(String("Zebra"), String("\xC4pfel"));
    EXPECT_LT(String("a"), String("ab"));
    EXPECT_TRUE(String("a\0b", 3) != "a");
    std::map<String, int> map{{"b", 2}, {"a", 1}};
    EXPECT_EQ(map.begin()->second, 1);
    std::unordered_set<String> set{"x", "x", "y"};
    EXPECT_EQ(set.size(), 2u);
}

TEST(SvString, ReadsNumbersAtTheStart) {
    struct Case {
        const char* text;
        double number;
        int integer;
    };
    const Case cases[] = {
        {"", 0, 0},
        {"12abc", 12, 12},
        {" \t-7.5e2x", -750, -7},
        {"+3", 3, 3},
        {"+-3", 0, 0},
        {"- 3", 0, 0},
        {"x1", 0, 0},
        {"1,5", 1, 1},
        {"99999999999", 99999999999.0, 2147483647},
        {".5", 0.5, 0},
        {"-99999999999", -99999999999.0, -2147483647 - 1},
        {"1e400", HUGE_VAL, 1},
        {"-1e400", -HUGE_VAL, -1},
        {"1e-400", 0, 1},
    };
    for (const auto& [text, number, integer] : cases) {
        SCOPED_TRACE(text);
        EXPECT_EQ(static_cast<double>(String(text)), number);
        EXPECT_EQ(SV::h_atoi(text), integer);
        EXPECT_EQ(SV::h_atol(String(text)), integer);
    }
}

TEST(SvString, ConvertsBetweenTheCodePageAndUtf8) {
    const String umlauts("\xE4\xF6\xFC \x80 plain");
    EXPECT_EQ(SV::ConvertStringToUTF8String(umlauts),
              "\xC3\xA4\xC3\xB6\xC3\xBC \xE2\x82\xAC plain");
    EXPECT_EQ(SV::ConvertUTF8StringToString("\xC3\xA4\xE2\x82\xAC"), "\xE4\x80");
    EXPECT_EQ(SV::ConvertUTF8StringToString("\xC5\x91"), "?");  // no letter that merely looks alike
    EXPECT_EQ(umlauts.Upper(), "\xC4\xD6\xDC \x80 PLAIN");
    EXPECT_EQ(String("\xC4 ABC").Lower(), "\xE4 abc");
}

TEST(SvString, SharedTextsMayBeCopiedAndChangedInSeveralThreads) {
    const String shared(1000, 'x');
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i) {
        threads.emplace_back([copy = shared] {
            for (int round = 0; round < 20000; ++round) {
                String mine(copy);
                if (round % 3 == 0) mine += 'y';
            }
        });
    }
    for (std::thread& thread : threads) thread.join();
    EXPECT_EQ(shared, std::string_view(std::string(1000, 'x')));
}

TEST(SvString, GoesIntoStreams) {
    std::ostringstream stream;
    stream << String("a\0b", 3) << String(30, 'z');
    EXPECT_EQ(stream.str(), std::string("a\0b", 3) + std::string(30, 'z'));
}
