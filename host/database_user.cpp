#include "database_user.h"

#include <cstdio>

#include "zbasic/zdbuser.h"
#include "zbasic/ztools.h"

namespace zelhost {

bool showDatabaseUser() {
    // Named here only to be shown: the library finds its file by itself.
    const SV::String path = Zel_GetProgramPathFilename("zdbuser.txt");
    ZelDBUserUtils file;
    if (!file.IsExternalDefined()) {
        std::printf("no database user: %s cannot be opened\n", path.c_str());
        return false;
    }
    const SV::String user = file.GetDBUserName("");
    if (user.empty()) {
        std::printf("no database user: %s holds none that can be read\n", path.c_str());
        return false;
    }
    std::printf("database user: %s\nfile: %s\n", user.c_str(), path.c_str());
    return true;
}

}  // namespace zelhost
