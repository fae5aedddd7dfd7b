#include "diag/logfile.h"

#include <algorithm>
#include <string>

#include <fcntl.h>
#include <io.h>
#include <share.h>
#include <sys/stat.h>

namespace {

struct Opening {
    int flags;
    const char* mode;
};

Opening openingOf(LogFileMode mode) {
    switch (mode) {
        case LogFileMode::kRead:
            return {_O_RDONLY, "rb"};
        case LogFileMode::kAppend:
            return {_O_WRONLY | _O_CREAT | _O_APPEND, "ab"};
        case LogFileMode::kEmpty:
            break;
    }
    return {_O_WRONLY | _O_CREAT | _O_TRUNC, "wb"};
}

}  // namespace

std::FILE* openLogFile(const char* path, LogFileMode mode) {
    const Opening opening = openingOf(mode);
    const int file =
        ::_sopen(path, opening.flags | _O_BINARY | _O_NOINHERIT, _SH_DENYNO, _S_IREAD | _S_IWRITE);
    if (file < 0) return nullptr;
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
