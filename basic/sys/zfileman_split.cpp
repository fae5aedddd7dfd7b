#include <string_view>

#include "sv/ascii.h"
#include "zbasic/zfileman.h"

namespace {

constexpr std::string_view kSeparators = "\\/";

std::size_t driveSize(std::string_view path) {
    if (path.size() >= 2 && SV::IsAsciiLetter(path[0]) && path[1] == ':') return 2;
    if (path.size() < 3 || !SV::IsPathSeparator(path[0]) || !SV::IsPathSeparator(path[1])) return 0;
    const std::size_t serverEnd = path.find_first_of(kSeparators, 2);
    if (serverEnd == 2 || serverEnd == std::string_view::npos) return 0;
    const std::size_t shareEnd = path.find_first_of(kSeparators, serverEnd + 1);
    if (shareEnd == serverEnd + 1) return 0;
    return shareEnd == std::string_view::npos ? path.size() : shareEnd;
}

std::size_t baseNameSize(std::string_view name) {
    const std::size_t point = name.rfind('.');
    return name == "." || name == ".." || point == std::string_view::npos ? name.size() : point;
}

}  // namespace

void ZelSystemFileManager::splitFileName(const SV::String& path, SV::String& drive,
                                         SV::String& directory, SV::String& baseName,
                                         SV::String& extension, bool keepsDot) {
    std::string_view rest = path;
    const auto take = [&rest](std::size_t size) {
        SV::String part(rest.substr(0, size));
        rest.remove_prefix(size);
        return part;
    };
    const SV::String parts[] = {take(driveSize(rest)),
                                take(rest.find_last_of(kSeparators) + 1),  // npos + 1 is 0
                                take(baseNameSize(rest))};
    if (!keepsDot && !rest.empty()) rest.remove_prefix(1);
    const SV::String last(rest);
    drive = parts[0];  // only now: any of them may be the path itself
    directory = parts[1];
    baseName = parts[2];
    extension = last;
}
