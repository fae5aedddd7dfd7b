// Files that claim to be plug-ins.

#include <cstdint>
#include <cstdlib>
#include <string>

#include "zelplugcheck/judge.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const zelplugcheck::PeImage image(std::string(reinterpret_cast<const char*>(data), size));
    if (zelplugcheck::judge(image).empty()) std::abort();
    if (image.isX64() && !image.isPe()) std::abort();
    return 0;
}
