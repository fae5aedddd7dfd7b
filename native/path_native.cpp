// Where the program lies, without Windows: what `sv/core/path_win.cpp` asks the system.

#include "sv/path.h"

#include <filesystem>

namespace SV {

const String& GetProgramDirectory() {
    static const String directory(
        std::filesystem::read_symlink("/proc/self/exe").parent_path().string() + "/");
    return directory;
}

}  // namespace SV
