#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "support/child.h"
#include "support/temp_dir.h"
#include "zbasic/zcrypt.h"
#include "zbasic/zdbuser.h"

#include <windows.h>

using namespace std::string_literals;

namespace {

ChildResult zeldbuser(const std::vector<std::string>& arguments,
                      const std::optional<std::string>& input = {}) {
    return runProgram(programFolder() + "\\zeldbuser.exe", arguments, {"", {}, input});
}

std::string deciphered(const std::string& digits) {
    const auto [text, size] = ZelCryptoUtils::AESDecrypt(digits.c_str());
    std::string lines(text ? text : "");
    ZelCryptoUtils::Free(text);
    return lines;
}

HANDLE consoleFile(const char* name) {
    SECURITY_ATTRIBUTES inheritable = {sizeof inheritable, nullptr, TRUE};
    return ::CreateFileA(name, GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE,
                         &inheritable, OPEN_EXISTING, 0, nullptr);
}

void type(HANDLE console, const std::string& text) {
    for (const char c : text) {
        INPUT_RECORD key = {};
        key.EventType = KEY_EVENT;
        key.Event.KeyEvent.bKeyDown = TRUE;
        key.Event.KeyEvent.wRepeatCount = 1;
        key.Event.KeyEvent.uChar.AsciiChar = c;
        key.Event.KeyEvent.wVirtualKeyCode = c == '\r' ? VK_RETURN : 0;
        DWORD written = 0;
        ::WriteConsoleInputA(console, &key, 1, &written);
    }
}

}  // namespace

// argv: file, what is typed. Shows what the program says, and what is on the screen then.
CHILD_MAIN(typesPassword) {
    STARTUPINFOA startup = {};
    startup.cb = sizeof startup;
    startup.dwFlags = STARTF_USESTDHANDLES;
    startup.hStdOutput = ::GetStdHandle(STD_OUTPUT_HANDLE);
    startup.hStdError = ::GetStdHandle(STD_ERROR_HANDLE);
    ::FreeConsole();
    if (!::AllocConsole()) return 90;
    startup.hStdInput = consoleFile("CONIN$");
    type(startup.hStdInput, std::string(argv[2]) + "\r" + argv[3] + "\r");
    std::string command = "zeldbuser write \"" + std::string(argv[1]) + "\" user";
    PROCESS_INFORMATION process = {};
    if (!::CreateProcessA((programFolder() + "\\zeldbuser.exe").c_str(), command.data(), nullptr,
                          nullptr, TRUE, 0, nullptr, nullptr, &startup, &process)) {
        return 91;
    }
    ::WaitForSingleObject(process.hProcess, 30'000);
    DWORD exitCode = 92;
    ::GetExitCodeProcess(process.hProcess, &exitCode);
    std::string screen(80 * 25, ' ');
    DWORD count = 0;
    ::ReadConsoleOutputCharacterA(consoleFile("CONOUT$"), screen.data(), 80 * 25, {0, 0}, &count);
    std::erase(screen, ' ');
    screen += "\n";
    ::WriteFile(startup.hStdError, screen.data(), static_cast<DWORD>(screen.size()), &count,
                nullptr);
    return static_cast<int>(exitCode);
}

TEST(Zeldbuser, AsksOnAConsoleWithoutShowingWhatIsTyped) {
    const TempDir folder;
    const std::string path = folder.path("user.txt");
    const ChildResult good = runChild("typesPassword", {path, "S3cret", "S3cret"});
    EXPECT_EQ(good.exitCode, 0u);
    EXPECT_EQ(good.out, "user\n");
    EXPECT_EQ(good.err, "Password: \nPassword again: \n\n") << "nothing on the screen";
    EXPECT_EQ(ZelDBUserUtils(path.c_str()).GetDBUserPassword(""), "S3cret");

    const ChildResult different = runChild("typesPassword", {path, "one", "two"});
    EXPECT_EQ(different.exitCode, 1u);
    EXPECT_EQ(ZelDBUserUtils(path.c_str()).GetDBUserPassword(""), "S3cret");
}

TEST(Zeldbuser, WritesWhatTheLibraryReads) {
    struct Case {
        const char* why;
        std::string input;
        std::string password;
    };
    const Case cases[] = {
        {"no line end", "secret", "secret"},
        {"one line end", "secret\n", "secret"},
        {"as Windows has it", "secret\r\n", "secret"},
        {"blanks and umlauts", " \xE4 b\t\r\n", " \xE4 b\t"},
        {"empty", "\n", ""},
        {"the longest", std::string(2016, 'p'), std::string(2016, 'p')},
    };
    const TempDir folder;
    const std::string path = folder.path("user file.txt");
    for (const auto& [why, input, password] : cases) {
        SCOPED_TRACE(why);
        const ChildResult result = zeldbuser({"write", path, "Db User"}, input);
        EXPECT_EQ(result.exitCode, 0u) << result.err;
        EXPECT_EQ(result.out, "Db User\n") << "the name, and nothing of the password";
        EXPECT_EQ(deciphered(readFile(path)), "zdbuser\nDb User\n" + password);
        ZelDBUserUtils file(path.c_str());
        EXPECT_EQ(file.GetDBUserName(""), "Db User");
        EXPECT_EQ(file.GetDBUserPassword(""), password);
        EXPECT_EQ(zeldbuser({"check", path}).out, "Db User\n");
    }
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.root()), {}), 1)
        << "no temporary file stays";
}

TEST(Zeldbuser, RefusesWhatTheLibraryWouldNotRead) {
    struct Case {
        const char* why;
        std::vector<std::string> arguments;
        std::optional<std::string> input;
        unsigned long exitCode;
    };
    const TempDir folder;
    const std::string old = "the old file";
    const std::string path = folder.write("user.txt", old);
    const Case cases[] = {
        {"two lines", {"write", path, "user"}, "a\nb\n", 1},
        {"an empty line behind", {"write", path, "user"}, "a\n\n", 1},
        {"a carriage return inside", {"write", path, "user"}, "a\rb", 1},
        {"NUL", {"write", path, "user"}, "a\0b"s, 1},
        {"a name of two lines", {"write", path, "us\ner"}, "a", 1},
        {"no name", {"write", path, ""}, "a", 1},
        {"a byte too long", {"write", path, "Db User"}, std::string(2017, 'p'), 1},
        {"far too long", {"write", path, "user"}, std::string(100'000, 'p'), 1},
        {"no standard input", {"write", path, "user"}, std::nullopt, 1},
        {"the password among the arguments", {"write", path, "user", "secret"}, "a", 2},
        {"no file", {"write"}, "a", 2},
        {"no command", {}, "a", 2},
        {"a worthless file", {"check", path}, std::nullopt, 1},
        {"no such file", {"check", folder.path("none")}, std::nullopt, 1},
        {"a folder", {"check", folder.root().string()}, std::nullopt, 1},
        {"no such folder", {"write", folder.path("none\\user.txt"), "user"}, "a", 1},
    };
    for (const auto& [why, arguments, input, exitCode] : cases) {
        SCOPED_TRACE(why);
        const ChildResult result = zeldbuser(arguments, input);
        EXPECT_EQ(result.exitCode, exitCode);
        EXPECT_EQ(result.out, "");
        EXPECT_NE(result.err, "");
        EXPECT_EQ(readFile(path), old);
    }
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.root()), {}), 1);
}

TEST(Zeldbuser, LeavesAFileThatIsInUse) {
    const TempDir folder;
    const std::string path = folder.path("user.txt");
    ASSERT_EQ(zeldbuser({"write", path, "first"}, "a").exitCode, 0u);
    const ZelDBUserUtils reader(path.c_str());
    EXPECT_EQ(zeldbuser({"write", path, "second"}, "a").exitCode, 1u);
    EXPECT_EQ(zeldbuser({"check", path}).out, "first\n");
}
