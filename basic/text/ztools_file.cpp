// Looking for files.

#include <cstdio>

#include "sv/path.h"
#include "zbasic/ztools.h"

bool Zel_FileExists(const char* path) {
    if (!path || !*path || Zel_Valid_DBFilename(path)) return false;
    std::FILE* const file = std::fopen(path, "rbN");
    if (file) std::fclose(file);
    return file != nullptr;
}

SV::String Zel_GetProgramPath(bool withSeparator) {
    SV::String path = SV::GetProgramDirectory();
    if (!withSeparator) path.erase(path.size() - 1);
    return path;
}

SV::String Zel_GetProgramPathFilename(const SV::String& name) {
    if (SV::IsAbsolutePath(name) || !Zel_Valid_Filename(name.c_str())) return name;
    return Zel_GetProgramPath(true) + name;
}
