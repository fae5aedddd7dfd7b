#include "diag/logfile.h"

#include <algorithm>
#include <cstdint>
#include <string>

#include <fcntl.h>
#include <io.h>

#include <windows.h>

#include "diag/winowner.h"

namespace {

struct Opening {
    DWORD access;
    DWORD disposition;
    int flags;
    const char* mode;
};

Opening openingOf(LogFileMode mode) {
    switch (mode) {
        case LogFileMode::kRead:
            return {GENERIC_READ, OPEN_EXISTING, _O_RDONLY, "rb"};
        case LogFileMode::kAppend:
            // Without the right to write elsewhere the system itself puts each piece at the end.
            return {FILE_GENERIC_WRITE & ~DWORD{FILE_WRITE_DATA}, OPEN_ALWAYS,
                    _O_WRONLY | _O_APPEND, "ab"};
        case LogFileMode::kEmpty:
            break;
    }
    return {GENERIC_WRITE, CREATE_ALWAYS, _O_WRONLY, "wb"};
}

}  // namespace

std::FILE* openLogFile(const char* path, LogFileMode mode) {
    const Opening opening = openingOf(mode);
    WinFile handle(::CreateFileA(path, opening.access, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                                 opening.disposition, FILE_ATTRIBUTE_NORMAL, nullptr));
    if (!handle) return nullptr;
    const int file = ::_open_osfhandle(reinterpret_cast<std::intptr_t>(handle.get()),
                                       opening.flags | _O_BINARY | _O_NOINHERIT);
    if (file < 0) return nullptr;
    static_cast<void>(handle.release());
    std::FILE* const stream = ::_fdopen(file, opening.mode);
    if (!stream) ::_close(file);
    return stream;
}

bool writeLogText(std::FILE* file, std::string_view text) {
    std::string bytes;
    bytes.reserve(text.size() + static_cast<std::size_t>(std::ranges::count(text, '\n')));
    for (const char c : text) {
        if (c == '\n') bytes += '\r';
        bytes += c;
    }
    return std::fwrite(bytes.data(), 1, bytes.size(), file) == bytes.size();
}

void writeLogBytes(std::FILE* file, std::string_view bytes) {
    const auto handle = reinterpret_cast<HANDLE>(::_get_osfhandle(::_fileno(file)));
    DWORD written = 0;
    ::WriteFile(handle, bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr);
    // What is left is tried once more by the stream, which remembers when it fails, too.
    bytes.remove_prefix(written);
    if (!bytes.empty()) std::fwrite(bytes.data(), 1, bytes.size(), file);
}
