// Any text as a file name: what is accepted is free of what no file name may have.

#include <cstdint>
#include <cstdlib>
#include <string>

#include "zbasic/ztools.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string path(reinterpret_cast<const char*>(data), size);
    const std::string name = path.c_str();
    Zel_Valid_DBFilename(path.c_str());
    if (!Zel_Valid_Filename(path.c_str())) return 0;
    if (name.empty() || name.find("://") != std::string::npos) std::abort();
    if (std::string("/\\:").find(name.back()) != std::string::npos) std::abort();
    std::string rest = name;
    const bool isUnc = name.starts_with("\\\\");
    if (isUnc) rest = name.substr(name.find_first_of("\\/", name.find('\\', 2) + 1) + 1);
    if (rest.find_first_of(isUnc ? "|\"*<>?:" : "|\"*<>?") != std::string::npos) std::abort();
    if (rest.find(':') != rest.rfind(':')) std::abort();
    return 0;
}
