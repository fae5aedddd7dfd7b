#include "common/files.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <memory>
#include <system_error>

#include <windows.h>

namespace {

struct CloseFile {
    void operator()(std::FILE* file) const { std::fclose(file); }
};
using File = std::unique_ptr<std::FILE, CloseFile>;

bool writeAll(const std::string& path, std::string_view content) {
    File file(std::fopen(path.c_str(), "wb"));
    if (!file) return false;
    const bool isWritten =
        std::fwrite(content.data(), 1, content.size(), file.get()) == content.size() &&
        std::fflush(file.get()) == 0;  // not every run time tells by `fclose`
    return std::fclose(file.release()) == 0 && isWritten;
}

}  // namespace

bool loadFile(const std::string& path, std::string& content, std::string& reason) {
    const File file(std::fopen(path.c_str(), "rb"));
    if (!file) {
        reason = std::strerror(errno);
        return false;
    }
    char block[65536];
    std::size_t size = 0;
    while ((size = std::fread(block, 1, sizeof block, file.get())) > 0) content.append(block, size);
    if (!std::ferror(file.get())) return true;
    reason = std::strerror(errno);
    return false;
}

bool saveFile(const std::string& path, std::string_view content, std::string& reason) {
    const std::string temporary = path + ".tmp";
    if (!writeAll(temporary, content)) {
        reason = std::strerror(errno);
        std::remove(temporary.c_str());
        return false;
    }
    if (::MoveFileExA(temporary.c_str(), path.c_str(), MOVEFILE_REPLACE_EXISTING)) return true;
    reason = std::system_category().message(static_cast<int>(::GetLastError()));
    std::remove(temporary.c_str());
    return false;
}

bool finishOutput() {
    if (std::fflush(stdout) == 0 && !std::ferror(stdout)) return true;
    std::fputs("standard output: cannot be written\n", stderr);
    return false;
}
