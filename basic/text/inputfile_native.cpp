#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>

#include "text/inputfile.h"

namespace {

// A descriptor counts from 0; as a pointer it is one more, so that null is none.
int descriptor(void* file) { return static_cast<int>(reinterpret_cast<std::intptr_t>(file)) - 1; }

}  // namespace

void* noInputFile() { return nullptr; }

void* openInputFile(const char* name) {
    return reinterpret_cast<void*>(std::intptr_t{::open(name, O_RDONLY | O_CLOEXEC)} + 1);
}

void closeInputFile(void* file) { ::close(descriptor(file)); }

std::optional<std::int64_t> inputFileSize(void* file) {
    struct stat status;
    if (::fstat(descriptor(file), &status) != 0) return std::nullopt;
    return status.st_size;
}

std::optional<std::int32_t> readInputFile(void* file, char* buffer, std::int32_t size) {
    const auto count = ::read(descriptor(file), buffer, static_cast<std::size_t>(size));
    if (count < 0) return std::nullopt;
    return static_cast<std::int32_t>(count);
}

bool seekInputFile(void* file, std::int64_t offset) {
    return ::lseek(descriptor(file), offset, SEEK_SET) >= 0;
}

void stopProcess(const char* message) {
    std::fputs(message, stderr);
    std::_Exit(1);
}
