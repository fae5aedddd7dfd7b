#include "zeldbuser/password.h"

#include <array>
#include <cstddef>
#include <cstdio>

#include <windows.h>

namespace {

constexpr std::size_t kMaxPassword = 4096;

// The console without echo, as long as this lives.
class SilentConsole {
public:
    explicit SilentConsole(HANDLE input) : m_input(input) {
        ::GetConsoleMode(m_input, &m_mode);
        ::SetConsoleMode(m_input, (m_mode & ~DWORD{ENABLE_ECHO_INPUT}) | ENABLE_LINE_INPUT |
                                      ENABLE_PROCESSED_INPUT);
    }
    SilentConsole(const SilentConsole&) = delete;
    SilentConsole& operator=(const SilentConsole&) = delete;
    ~SilentConsole() { ::SetConsoleMode(m_input, m_mode); }

private:
    HANDLE m_input;
    DWORD m_mode = 0;
};

bool isConsole(HANDLE input) {
    DWORD mode = 0;
    return ::GetConsoleMode(input, &mode) != FALSE;
}

// Text in the process code page; false when that lacks a character.
bool convert(const wchar_t* wide, int size, std::string& text) {
    std::array<char, 2 * kMaxPassword> buffer;
    BOOL isLossy = FALSE;
    const int count = ::WideCharToMultiByte(CP_ACP, WC_NO_BEST_FIT_CHARS, wide, size, buffer.data(),
                                            static_cast<int>(buffer.size()), nullptr, &isLossy);
    if (!isLossy) text.assign(buffer.data(), static_cast<std::size_t>(count));
    ::SecureZeroMemory(buffer.data(), buffer.size());
    return !isLossy;
}

bool readTyped(HANDLE input, const char* prompt, std::string& text, std::string& reason) {
    std::fputs(prompt, stderr);
    std::array<wchar_t, kMaxPassword> line;
    DWORD count = 0;
    const SilentConsole silence(input);
    const bool isRead = ::ReadConsoleW(input, line.data(), static_cast<DWORD>(line.size()), &count,
                                       nullptr) != FALSE;
    std::fputs("\n", stderr);
    while (count > 0 && (line[count - 1] == L'\n' || line[count - 1] == L'\r')) --count;
    const bool isConverted = isRead && convert(line.data(), static_cast<int>(count), text);
    ::SecureZeroMemory(line.data(), sizeof line);
    if (!isRead)
        reason = "cannot be read";
    else if (!isConverted)
        reason = "has characters that the code page lacks";
    return isConverted;
}

bool readTypedTwice(HANDLE input, std::string& password, std::string& reason) {
    std::string again;
    again.reserve(2 * kMaxPassword);
    const bool isRead = readTyped(input, "Password: ", password, reason) &&
                        readTyped(input, "Password again: ", again, reason);
    const bool isSame = password == again;
    forget(again);
    if (isRead && !isSame) reason = "was not the same the second time";
    return isRead && isSame;
}

bool readRedirected(HANDLE input, std::string& password, std::string& reason) {
    password.resize(kMaxPassword);
    std::size_t size = 0;
    DWORD count = 0;
    ::SetLastError(ERROR_SUCCESS);
    while (size < password.size() &&
           ::ReadFile(input, password.data() + size, static_cast<DWORD>(password.size() - size),
                      &count, nullptr) &&
           count > 0) {
        size += count;
        count = 0;
    }
    if (size == 0 && ::GetLastError() == ERROR_INVALID_HANDLE) {
        reason = "cannot be read: there is no standard input";
        return false;
    }
    if (size == kMaxPassword) {
        reason = "is too long";
        return false;
    }
    password.resize(size);
    if (password.ends_with('\n')) password.pop_back();
    if (password.ends_with('\r')) password.pop_back();
    return true;
}

}  // namespace

bool readPassword(std::string& password, std::string& reason) {
    password.reserve(2 * kMaxPassword);
    const HANDLE input = ::GetStdHandle(STD_INPUT_HANDLE);
    return isConsole(input) ? readTypedTwice(input, password, reason)
                            : readRedirected(input, password, reason);
}

void forget(std::string& text) {
    text.resize(text.capacity());
    ::SecureZeroMemory(text.data(), text.size());
    text.clear();
}
