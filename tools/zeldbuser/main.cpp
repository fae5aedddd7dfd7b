// zeldbuser: writes and checks the file that says which user logs in to the database.

#include <algorithm>
#include <cstdio>
#include <string>
#include <string_view>
#include <vector>

#include "zbasic/zcrypt.h"
#include "zbasic/zdbuser.h"
#include "zeldbuser/password.h"
#include "common/files.h"

using namespace std::string_view_literals;

namespace {

enum ExitCode { kDone = 0, kRefused = 1, kWrongUsage = 2 };

// The reader keeps the first line and gives it to nobody.
constexpr std::string_view kFirstLine = "zdbuser";
// Its line buffer holds 4,094 digits and the NUL: 127 whole blocks of 16 bytes.
constexpr std::size_t kMaxText = 2032;

constexpr char kUsage[] =
    "zeldbuser write FILE USER   writes a database user file; asks for the password,\n"
    "                            or reads it from standard input when that is redirected\n"
    "zeldbuser check FILE        reads a database user file and shows the user's name\n"
    "zeldbuser --help | --version\n"
    "\n"
    "Programs look for \"zdbuser.txt\" in their own folder. The file keeps the password out\n"
    "of plain sight and no more: whoever has this program's library can read it.\n"
    "Exit status: 0 done, 1 refused or worthless, 2 wrong usage.\n";

int refuse(const std::string& what, const std::string& why) {
    std::fprintf(stderr, "%s: %s\n", what.c_str(), why.c_str());
    return kRefused;
}

bool isOneLine(std::string_view text) { return text.find_first_of("\r\n\0"sv) == text.npos; }

int check(const std::string& path) {
    ZelDBUserUtils file(path.c_str());
    if (!file.IsExternalDefined()) return refuse(path, "cannot be opened");
    const SV::String user = file.GetDBUserName("");
    if (user.empty()) {
        return refuse(path, "holds no database user that this program's library can read");
    }
    std::puts(user.c_str());
    return kDone;
}

// The text of the file, enciphered; empty when there is no memory.
std::string encipheredLines(const std::string& user, const std::string& password) {
    std::string lines;
    lines.reserve(kMaxText);
    lines.append(kFirstLine).append("\n").append(user).append("\n").append(password);
    const auto [digits, size] = ZelCryptoUtils::AESEncrypt(lines.c_str());
    forget(lines);
    if (!digits) return {};
    std::string text(digits, static_cast<std::size_t>(size));
    ZelCryptoUtils::Free(digits);
    return text;
}

int writeWith(const std::string& path, const std::string& user, const std::string& password) {
    if (!isOneLine(password)) return refuse("password", "must be one line");
    if (kFirstLine.size() + user.size() + password.size() + 2 > kMaxText) {
        return refuse("user and password", "are too long for the library's reader");
    }
    // No line end behind it: the reader would take it for part of the digits.
    const std::string content = encipheredLines(user, password);
    std::string reason = "no memory";
    if (content.empty() || !saveFile(path, content, reason)) {
        return refuse(path, "cannot be written (" + reason + ")");
    }
    return check(path);
}

int write(const std::string& path, const std::string& user) {
    if (user.empty()) return refuse("user", "must not be empty");
    if (!isOneLine(user)) return refuse("user", "must be one line");
    std::string password;
    std::string reason;
    const int result = readPassword(password, reason) ? writeWith(path, user, password)
                                                      : refuse("password", reason);
    forget(password);
    return result;
}

int run(const std::vector<std::string>& arguments) {
    const std::string command = arguments.empty() ? "" : arguments[0];
    if (command == "write" && arguments.size() == 3) return write(arguments[1], arguments[2]);
    if (command == "check" && arguments.size() == 2) return check(arguments[1]);
    if (command == "--help" && arguments.size() == 1) {
        std::fputs(kUsage, stdout);
        return kDone;
    }
    if (command == "--version" && arguments.size() == 1) {
        std::puts("zeldbuser " ZELDBUSER_VERSION);
        return kDone;
    }
    std::fputs(kUsage, stderr);
    return kWrongUsage;
}

}  // namespace

int main(int argc, char** argv) {
    const int status = run({argv + std::min(argc, 1), argv + argc});
    return finishOutput() ? status : kRefused;
}
