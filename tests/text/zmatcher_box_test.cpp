// Errors as users see them, and what the code page says by the run-time library's account.

#include <gtest/gtest.h>

#include <cctype>
#include <clocale>
#include <string>
#include <vector>

#include "support/box_watcher.h"
#include "zbasic/zmatcher.h"

#include <windows.h>

namespace {

TEST(MatcherError, IsShownOnceWhereItIsAskedFor) {
    const BoxWatcher watcher(IDOK);
    ZelRegEx expression("a(", 0);
    EXPECT_TRUE(!expression);
    EXPECT_EQ(expression.match("a"), 0);
    EXPECT_EQ(expression.regExec("a", true), REG_NOMATCH);  // nothing compiled: no box
    EXPECT_EQ(expression.regComp("[b-a]", 0, false), REG_ERANGE);
    expression = "a{2,1}";
    EXPECT_EQ(expression.regComp("a{1,255}{1,255}", 0, true), REG_ESPACE);
    ASSERT_EQ(expression.regComp("b", 0, true), 0);
    EXPECT_EQ(expression.regExec("a", true), REG_NOMATCH);
    EXPECT_EQ(expression.match("a"), 0);  // a mismatch is no error
    EXPECT_EQ(expression.match("b"), 1);
    ZelJokerz wildcard(nullptr, 0);
    wildcard = "*a";
    EXPECT_TRUE(!wildcard);

    const std::string start = "The regular expression cannot be used.\n\n";
    const std::vector<std::string> expected = {
        start + "A parenthesis ( or ) has no counterpart.",
        start + "Between { and } there is no valid number of repetitions.",
        "There is not enough memory for the regular expression.",
        start + "The expression is not valid: No match",
        start + "There is nothing to repeat before *, +, ? or {.",
    };
    const std::vector<SeenBox> boxes = watcher.waitFor(expected.size());
    ASSERT_EQ(boxes.size(), expected.size());
    for (std::size_t i = 0; i < boxes.size(); ++i) {
        EXPECT_EQ(boxes[i].text, expected[i]);
        EXPECT_EQ(boxes[i].buttons.size(), 1U);
        EXPECT_TRUE(boxes[i].hasErrorIcon);
    }
}

TEST(MatcherError, HasATextForEveryCode) {
    const struct {
        int code;
        const char* text;
    } kCases[] = {
        {REG_NOMATCH, "The expression is not valid: No match"},
        {REG_BADPAT, "The expression is not valid: Invalid expression"},
        {REG_ECOLLATE, "Between [. and .] or [= and =] there is no known character."},
        {REG_ECTYPE, "Between [: and :] there is no known class of characters."},
        {REG_EESCAPE, "The expression ends in a backslash."},
        {REG_ESUBREG, "A back reference names a group that does not exist."},
        {REG_EBRACK, "A bracket [ is not closed."},
        {REG_EPAREN, "A parenthesis ( or ) has no counterpart."},
        {REG_EBRACE, "A brace { is not closed."},
        {REG_BADBR, "Between { and } there is no valid number of repetitions."},
        {REG_ERANGE, "A range in brackets ends before it begins."},
        {REG_ESPACE, "The expression is not valid: Out of memory"},
        {REG_BADRPT, "There is nothing to repeat before *, +, ? or {."},
        {14, "The expression is not valid: Unknown error"},
        {-1, "The expression is not valid: Unknown error"},
    };
    for (const auto& [code, text] : kCases) EXPECT_EQ(ZelRegEx::fmtErrMsg(code), text) << code;
}

struct ClassCase {
    const char* name;
    int (*isMember)(int);
};

TEST(MatcherCodePage, ClassesAndCasesAreThoseOfTheRunTimeLibrary) {
    const ClassCase kClasses[] = {
        {"alpha", std::isalpha}, {"digit", std::isdigit}, {"alnum", std::isalnum},
        {"upper", std::isupper}, {"lower", std::islower}, {"space", std::isspace},
        {"punct", std::ispunct}, {"cntrl", std::iscntrl}, {"xdigit", std::isxdigit},
        {"graph", std::isgraph},
    };
    for (int byte = 1; byte < 256; ++byte) {
        const std::string text(1, static_cast<char>(byte));
        for (const auto& [name, isMember] : kClasses) {
            const ZelRegEx expression((std::string("[[:") + name + ":]]").c_str(), 0);
            std::setlocale(LC_CTYPE, ".ACP");
            const bool expected = isMember(byte) != 0;
            std::setlocale(LC_CTYPE, "C");
            EXPECT_EQ(expression.match(text.c_str()), expected) << name << " " << byte;
        }
        std::setlocale(LC_CTYPE, ".ACP");
        const std::string lower(1, static_cast<char>(std::tolower(byte)));
        std::setlocale(LC_CTYPE, "C");
        EXPECT_EQ(ZelRegEx(("[[." + text + ".]]").c_str(), 2).match(lower.c_str()), 1) << byte;
    }
}

}  // namespace
