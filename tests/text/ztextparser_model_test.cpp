// The parser beside its model, under random use.

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "text/parser_fixture.h"
#include "text/text_model.h"
#include "zbasic/ztextparser.h"

namespace {

// What a caller can see of a parser.
std::vector<std::int64_t> stateOf(const ZelTextParser& parser) {
    return {parser.GetLastLineNumber(),
            parser.GetLookAheadLineNumber(),
            parser.GetTokenOffset(),
            parser.GetNextTokenOffset(),
            parser.GetSavedOffset(),
            parser.GetSavedLineNum(),
            parser.GetCurrentLineOffset(),
            parser.GetTokenCount(),
            parser.IsOkay(),
            parser.GetLineReader()->GetCurrentOffset()};
}

std::vector<std::int64_t> stateOf(const ModelParser& model) {
    return {model.lastLineNumber,    model.lookAheadLineNumber, model.tokenOffset,
            model.nextTokenOffset,   model.savedOffset,         model.savedLineNumber,
            model.currentLineOffset, model.tokenCount,          model.okay,
            model.reader.offset()};
}

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

    // Does the same to both; the result and the texts of both in two strings.
    void step(ZelTextParser& parser, ModelParser& model, std::string& got, std::string& expected) {
        SV::String text;
        std::string modelText;
        const char stop = "\"\n]a"[pick(4)];
        const bool consumeStop = pick(2) != 0;
        bool result = true, modelResult = true;
        switch (pick(12)) {
            default:
                result = parser.GetNextToken(text);
                modelResult = model.getNextToken(modelText);
                break;
            case 0:
                result = parser.GetUntil(stop, text, consumeStop, '\\');
                modelResult = model.readUntil(stop, modelText, consumeStop, "\\");
                break;
            case 1: {
                std::string unused;
                result = parser.SkipUntil(stop, consumeStop);
                modelResult = model.readUntil(stop, unused, consumeStop, nullptr);
                break;
            }
            case 2:
                result = parser.SkipLine();
                modelResult = model.skipLine();
                break;
            case 3:
                result = parser.SkipToken();
                modelResult = model.skipToken();
                break;
            case 4:
                parser.SaveOffset();
                model.saveOffset();
                break;
            case 5:
                parser.KeepTokenOffset();
                model.keepTokenOffset = true;
                break;
            case 6:
                if (pick(3)) break;
                result = parser.MoveTo(model.savedOffset, model.savedLineNumber);
                modelResult = model.moveTo(model.savedOffset, model.savedLineNumber);
                break;
        }
        SV::String lookAhead, spaces;
        parser.GetLookAheadToken(lookAhead);
        parser.GetSpacesToken(spaces);
        got = describe(result, text, lookAhead, spaces);
        expected = describe(modelResult, modelText, model.lookAhead, model.spaces);
    }

private:
    std::size_t pick(std::size_t count) { return m_random() % count; }

    static std::string describe(bool result, std::string_view text, std::string_view lookAhead,
                                std::string_view spaces) {
        std::string all = result ? "yes" : "no";
        for (std::string_view part : {text, lookAhead, spaces}) all.append(" | ").append(part);
        return all;
    }

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
            std::string got, expected;
            use.step(*parser, model, got, expected);
            ASSERT_EQ(got, expected) << "step " << i;
            ASSERT_EQ(stateOf(*parser), stateOf(model)) << "step " << i;
        }
    }
}

}  // namespace
