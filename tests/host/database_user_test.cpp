// zelhost -zdbuser.

#include <gtest/gtest.h>

#include <string>

#include "host/host_program.h"
#include "support/program_copy.h"
#include "zbasic/zcrypt.h"

TEST(DatabaseUser, IsShownWithItsFileAndWithoutItsPassword) {
    const auto [digits, size] = ZelCryptoUtils::AESEncrypt("\nmodeller\nsecret");
    const std::string good(digits, static_cast<std::size_t>(size));
    ZelCryptoUtils::Free(digits);
    const ProgramCopy copy;
    for (const char* const name : {"zelhost.exe", "lang.ini", "language\\1033\\zbasic18.dll",
                                   "language\\1031\\zbasic18.dll"}) {
        copy.add(name);
    }
    const std::string file = copy.folder().path("zdbuser.txt");
    const auto shown = [&] {
        const ChildResult result = runProgram(copy.folder().path("zelhost.exe"),
                                              {"-zdbuser", "-no_gui"}, {copy.folder().path("")});
        return result.out + std::to_string(result.exitCode) + result.err;
    };
    EXPECT_EQ(shown(), "no database user: " + file + " cannot be opened\n1");
    copy.folder().write("zdbuser.txt", good);
    EXPECT_EQ(shown(), "database user: modeller\nfile: " + file + "\n0");
    copy.folder().write("zdbuser.txt", good + "\n");
    EXPECT_EQ(shown(), "no database user: " + file + " holds none that can be read\n1");
}
