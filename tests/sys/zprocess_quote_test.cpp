// Arguments on their way through the system, the interpreter and the run time's own splitter.

#include <gtest/gtest.h>

#include <cstdio>
#include <random>
#include <string>
#include <vector>

#include "support/child.h"
#include "sys/redirected_run.h"
#include "zbasic/zprocess.h"

namespace {

const char* const kArguments[] = {
    "",
    "a",
    "a b",
    " ",
    "\t",
    "*",
    "?.exe",
    "a\"b",
    "\"",
    "\"\"",
    "\"\"\"a",
    "\\",
    "\\\\",
    "a\\",
    "a\\b",
    "a\\\"b",
    "a\\\\\"",
    "C:\\a b\\",
    "\\\\server\\share\\",
    "--x=\"y z\"",
    "'a b'",
    "1>x",
    "2>&1",
    "x21>y",
    "1>>\"a b\"",
    "1>",
    "11>>22>>",
    "\\1>\\",
    "> 1 <2",
    "a&b|c<d>e^f",
    "(a) & (b)",
    "%",
    "%%",
    "%PATH%",
    "%PATH:a=b%",
    "%PATH%PATH%",
    "\\%\\",
    "%\"%",
    "100% 1>%x%",
    "!a!",
    "^",
    "^^",
    "^\"",
    "@;,=`~#$",
    "{}[]+-",
    "\xC4\xF6\xDF \x80",
    "\x7F\x01",
};

std::vector<std::string> randomArguments(unsigned seed, int count) {
    constexpr char kAlphabet[] = "a1 2>>\"\"\\\\%%^&|<(!*\t\xE4";
    std::mt19937 random(seed);
    std::vector<std::string> arguments;
    for (int i = 0; i < count; ++i) {
        std::string argument;
        for (auto size = random() % 12; size > 0; --size) {
            argument += kAlphabet[random() % (sizeof kAlphabet - 1)];
        }
        arguments.push_back(argument);
    }
    return arguments;
}

std::string printed(const std::vector<std::string>& arguments) {
    std::string text;
    for (const std::string& argument : arguments) text += "<" + argument + ">\n";
    return text;
}

std::string quotedAll(const std::vector<std::string>& arguments, bool forInterpreter) {
    std::string all;
    for (const std::string& argument : arguments) {
        const SV::String quoted = Zel_QuoteArgument(SV::String(argument), forInterpreter);
        all += ' ' + std::string(std::string_view(quoted));
    }
    return all;
}

std::string throughInterpreter(const std::string& arguments) {
    // The interpreter takes away the outer quotes, and would take others if there were none.
    const std::string line = "\"" + programPath() + "\" --child printArguments" + arguments;
    ZelSynchronousProcess process("cmd /s /c", SV::String("\"" + line + "\" 1>quoted"), kCmdHide);
    process.SetUseRedirection(true);
    EXPECT_TRUE(startProgram(process));
    EXPECT_EQ(waitFor(process), 0);
    return textOf("quoted");
}

}  // namespace

CHILD_MAIN(printArguments) {
    for (int i = 1; i < argc; ++i) std::printf("<%s>\n", argv[i]);
    return 0;
}

TEST(QuoteArgument, ComesThroughToAProgram) {
    std::vector<std::string> arguments(std::begin(kArguments), std::end(kArguments));
    arguments.insert(arguments.end(), {"\n", "a\n\nb \"c"});
    EXPECT_EQ(outputOf("--child printArguments" + quotedAll(arguments, false)), printed(arguments));
    for (unsigned seed = 1; seed <= 5; ++seed) {
        const auto some = randomArguments(seed, 500);
        EXPECT_EQ(outputOf("--child printArguments" + quotedAll(some, false)), printed(some));
    }
}

TEST(QuoteArgument, ComesThroughTheInterpreterUnchanged) {
    const TempDir dir;
    const CurrentDirectory inDir(dir.root().string());
    const std::vector<std::string> arguments(std::begin(kArguments), std::end(kArguments));
    EXPECT_EQ(throughInterpreter(quotedAll(arguments, true)), printed(arguments));
    for (unsigned seed = 1; seed <= 5; ++seed) {  // its lines end at 8191 characters
        const auto some = randomArguments(seed, 150);
        EXPECT_EQ(throughInterpreter(quotedAll(some, true)), printed(some));
    }
}

TEST(QuoteArgument, RefusesWhatCannotBePassed) {
    struct Case {
        std::string argument;
        bool forProgram;
        bool forInterpreter;
    };
    const Case cases[] = {{std::string("a\0b", 3), false, false},
                          {std::string(1, '\0'), false, false},
                          {"a\rb", true, false},
                          {"\n", true, false},
                          {"", true, true}};
    for (const auto& [argument, forProgram, forInterpreter] : cases) {
        EXPECT_EQ(!Zel_QuoteArgument(SV::String(argument)).empty(), forProgram);
        EXPECT_EQ(!Zel_QuoteArgument(SV::String(argument), true).empty(), forInterpreter);
    }
}
