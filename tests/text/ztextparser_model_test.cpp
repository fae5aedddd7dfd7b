// The parser beside its model, under random use.

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <string_view>

#include "text/parser_fixture.h"
#include "text/text_model.h"
#include "zbasic/ztextparser.h"

namespace {

// Texts and calls.
class RandomUse {
public:
    explicit RandomUse(unsigned seed) : m_random(seed) {}

    std::string text() {
        static constexpr std::string_view kAlphabet = "ab1,._\\\"[] \t \n\n\r\xE4\xA0";
        // Half of the texts cross the end of a block.
        std::string text = pick(2) ? filler(kBlockSize - pick(40), 3000) : "";
        for (std::size_t left = pick(60); left > 0; --left)
            text += kAlphabet[pick(kAlphabet.size())];
        return text;
    }

    ParserCall call() {
        ParserCall call;
        call.operation = pick(12);
        call.stop = "\"\n]a"[pick(4)];
        call.consumesStop = pick(2) != 0;
        // Seldom: texts are short, and it starts over.
        if (call.operation == ParserCall::kMoveToSaved && pick(3)) {
            call.operation = ParserCall::kNextToken;
        }
        return call;
    }

private:
    std::size_t pick(std::size_t count) { return m_random() % count; }

    std::mt19937 m_random;
};

TEST_F(TextParser, DoesWhatTheModelDoes) {
    for (unsigned seed = 0; seed < 400; ++seed) {
        RandomUse use(seed);
        const CharacterLocale locale(seed % 4 < 2 ? "C" : kGerman);
        const std::string text = use.text();
        SCOPED_TRACE("seed " + std::to_string(seed) + ": " +
                     text.substr(text.find_last_of('f') + 1));
        const int flags = seed % 2 ? ZelTextParser::kCommaIsDelimiter : 0;
        const auto parser = parserOf(text, flags);
        ModelParser model(text, flags != 0);
        for (int i = 0; i < 200; ++i) {
            ASSERT_EQ(differenceAfter(use.call(), *parser, model), "") << "step " << i;
        }
    }
}

}  // namespace
