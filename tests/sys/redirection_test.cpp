#include "sys/redirection.h"

#include <gtest/gtest.h>

#include <string>

namespace {

struct Case {
    const char* why;
    std::string line;
    const char* command;
    const char* output;  // "+" in front: appended
    const char* error;
};

const Case kCases[] = {
    {"none", "p a > b", "p a > b", "", ""},
    {"empty", "", "", "", ""},
    {"a new file", "p 1>o a", "p  a", "o", ""},
    {"appended", "p 1>>o", "p ", "+o", ""},
    {"error alone", "p 2>e", "p ", "", "e"},
    {"both", "p 1>o 2>>e a", "p   a", "o", "+e"},
    {"both, in the other order", "p 2>>e 1>o a", "p   a", "o", "+e"},
    {"at the start", "1>o p", " p", "o", ""},
    {"nothing but a clause", "1>o", "", "o", ""},
    {"quoted, with blanks", "p 1>\"o u t\" a", "p  a", "o u t", ""},
    {"quoted and appended", "p 2>>\"a b\"c", "p c", "", "+a b"},
    {"a path in quotes", R"(cmd /c dir 1>>"C:\out dir\x.txt")", "cmd /c dir ",
     R"(+C:\out dir\x.txt)", ""},
    {"backslashes may be doubled", R"(p 1>"C:\\o\\x" 2>"\\\\s\\d\")", "p  ", R"(C:\o\x)",
     R"(\\s\d\)"},
    {"unquoted they stand for themselves", R"(p 1>C:\\o)", "p ", R"(C:\\o)", ""},
    {"the quote does not close", "p 1>\"o u", "p ", "o u", ""},
    {"a quote and nothing else", "p 1>\"", "p ", "", ""},
    {"empty quotes", "p 1>\"\" a", "p  a", "", ""},
    {"nothing behind it: no clause", "p 1>", "p 1>", "", ""},
    {"only the second mark behind it", "p 1>>", "p ", "", ""},
    {"a blank behind it: no name", "p 1> o", "p  o", "", ""},
    {"a third mark belongs to the name", "p 1>>>o", "p ", "+>o", ""},
    {"inside of a word", "p x21>f", "p x2", "f", ""},
    {"inside of a quoted argument", "p \"a1>b c\" d", "p \"a c\" d", "b", ""},
    {"the first one counts", "p 1>a 1>b", "p  1>b", "a", ""},
    {"a stream is a file name", "p 1>o 2>&1", "p  ", "o", "&1"},
    {"no other character ends a name", "p 1>a\tb;c", "p ", "a\tb;c", ""},
    {"one in the name of the other", "p 1>a2>b c", "p  c", "a2>b", "b"},
    {"one in the quoted name of the other", "p 2>\"x 1>y z\" c", "p  c", "y", "x 1>y z"},
    {"one overlaps the end of the other", "p 2>\"x 1>y\"z c", "p  c", "y\"z", "x 1>y"},
    {"a NUL ends the line", std::string("p\0 1>o", 6), "p", "", ""},
};

std::string textOf(const RedirectTarget& target) {
    return (target.isAppended && !target.name.empty() ? "+" : "") + target.name;
}

}  // namespace

TEST(Redirection, CutsTheClausesOutOfTheCommandLine) {
    for (const auto& [why, line, command, output, error] : kCases) {
        SCOPED_TRACE(why);
        const SplitCommandLine split = splitRedirections(line);
        EXPECT_EQ(split.command, command);
        EXPECT_EQ(textOf(split.output), output);
        EXPECT_EQ(textOf(split.error), error);
    }
}
