#include "text/inputfile.h"

#include <windows.h>

void* noInputFile() { return INVALID_HANDLE_VALUE; }

void* openInputFile(const char* name) {
    return ::CreateFileA(name, GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING,
                         FILE_ATTRIBUTE_NORMAL, nullptr);
}

void closeInputFile(void* file) { ::CloseHandle(file); }

std::optional<std::int64_t> inputFileSize(void* file) {
    LARGE_INTEGER size;
    if (!::GetFileSizeEx(file, &size)) return std::nullopt;
    return size.QuadPart;
}

std::optional<std::int32_t> readInputFile(void* file, char* buffer, std::int32_t size) {
    DWORD count = 0;
    if (!::ReadFile(file, buffer, static_cast<DWORD>(size), &count, nullptr)) return std::nullopt;
    return static_cast<std::int32_t>(count);
}

bool seekInputFile(void* file, std::int64_t offset) {
    LARGE_INTEGER distance;
    distance.QuadPart = offset;
    return ::SetFilePointerEx(file, distance, nullptr, FILE_BEGIN) != FALSE;
}

void stopProcess(const char* message) {
    ::FatalAppExitA(0, message);
    ::ExitProcess(1);  // an attached debugger can make the call above return
}
