// Where the texts come from: the installed languages and their files.

#include <string>
#include <vector>

#include "text/mlcontainer.h"
#include "zbasic/zinter.h"
#include "zbasic/zmlstring.h"
#include "zbasic/ztools.h"

namespace {

// The name ends in .dll although the file is plain data, read and never loaded.
constexpr char kFileName[] = "zelml.dll";

SV::String pathOf(std::uint16_t language) {
    return Zel_GetProgramPath(true) + "language\\" + std::to_string(language) + "\\" + kFileName;
}

}  // namespace

void Zel_InitializeMultiLanguageStrings() {
    std::vector<char> buffer;
    for (const std::uint16_t language : ZelInternational::GetAvailableLanguages()) {
        MlStringTable& table = ZelLanguageContainer::Instance().table(language);
        ZelMLResFileReader(table, pathOf(language)).read(buffer);
    }
}
