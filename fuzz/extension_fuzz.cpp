// Extensions of file names: bytes are the extensions that are ours, one a line, and a path.

#include <vector>

#include "input.h"
#include "zbasic/zextension.h"

namespace {

std::string lower(std::string text) {
    for (char& c : text) c = static_cast<char>(c >= 'A' && c <= 'Z' ? c + 32 : c);
    return text;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Bytes input(data, size);
    std::vector<std::string> extensions;
    for (unsigned count = input.next() % 4 + 1; count > 0; --count) {
        extensions.emplace_back(input.until('\n'));
    }
    const std::string path(input.rest());
    ZelExtensionManager manager{SV::String(extensions[0])};
    for (const std::string& extension : extensions) manager.addExtension(SV::String(extension));
    check(std::string_view(manager.getExtension()) == extensions[0]);

    const std::size_t dot = path.rfind('.');
    const bool isOurs =
        dot != path.npos && std::ranges::any_of(extensions, [&](const std::string& extension) {
            return lower(extension) == lower(path.substr(dot + 1));
        });
    const SV::String without = manager.getPath(SV::String(path));
    check(std::string_view(without) == (isOurs ? path.substr(0, dot) : path));
    SV::String with(path);
    manager.setExtension(with);
    const bool isKept = isOurs || path.ends_with('\\');
    check(std::string_view(with) == (isKept ? path : path + "." + extensions[0]));

    SV::String base(path);
    SV::String extension;
    ZelExtensionManager::parsePath(base, base, extension);
    check(std::string_view(base) == path.substr(0, dot));
    check(std::string_view(extension) == (dot == path.npos ? "" : path.substr(dot + 1)));
    return 0;
}
