#include "diag/logfile.h"

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
            return {_O_RDONLY, "r"};
        case LogFileMode::kAppend:
            return {_O_WRONLY | _O_CREAT | _O_APPEND, "at"};
        case LogFileMode::kEmpty:
            break;
    }
    return {_O_WRONLY | _O_CREAT | _O_TRUNC, "wt"};
}

}  // namespace

std::FILE* openLogFile(const char* path, LogFileMode mode) {
    const Opening opening = openingOf(mode);
    const int file =
        ::_sopen(path, opening.flags | _O_TEXT | _O_NOINHERIT, _SH_DENYNO, _S_IREAD | _S_IWRITE);
    if (file < 0) return nullptr;
    std::FILE* const stream = ::_fdopen(file, opening.mode);
    if (!stream) ::_close(file);
    return stream;
}
