#include "database_user.h"

#include <string>

#include "zbasic/zdbuser.h"
#include "zbasic/ztools.h"

namespace zelhost {

DatabaseUser databaseUser() {
    // Named here only to be shown: the library finds its file by itself.
    const std::string path = Zel_GetProgramPathFilename("zdbuser.txt").c_str();
    ZelDBUserUtils file;
    if (!file.IsExternalDefined()) {
        return {false, {"no database user: %s cannot be opened", {path}}};
    }
    const std::string user = file.GetDBUserName("").c_str();
    if (user.empty()) {
        return {false, {"no database user: %s holds none that can be read", {path}}};
    }
    return {true, {"database user: %s\nfile: %s", {user, path}}};
}

}  // namespace zelhost
