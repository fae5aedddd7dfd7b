// Paths in parts, and the parts as the path again.

#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "input.h"
#include "zbasic/zfileman.h"

namespace {

bool hasAny(const SV::String& text, std::string_view characters) {
    return std::string_view(text).find_first_of(characters) != std::string_view::npos;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const SV::String path(std::string_view(reinterpret_cast<const char*>(data), size));
    SV::String drive, directory, baseName, extension, bare;
    ZelSystemFileManager::splitFileName(path, drive, directory, baseName, extension, true);
    check(drive + directory + baseName + extension == path);
    check(drive.empty() || drive.size() == 2 || hasAny(drive.substr(0, 1), "\\/"));
    check(directory.empty() || hasAny(directory.substr(directory.size() - 1), "\\/"));
    check(!hasAny(baseName, "\\/") && !hasAny(extension, "\\/"));
    check(extension.empty() || (extension[0] == '.' && !hasAny(extension.substr(1), ".")));
    check(!extension.empty() || !hasAny(baseName, ".") || baseName == "." || baseName == "..");

    SV::String parts[3];
    bare = path;
    ZelSystemFileManager::splitFileName(bare, parts[0], parts[1], parts[2], bare, false);
    check(parts[0] == drive && parts[1] == directory && parts[2] == baseName);
    check(bare == extension.substr(1));
    return 0;
}
