#include "zbasic/zfileman.h"

#include <optional>

#include "sys/environment.h"
#include "sys/zfileman_sys.h"
#include "zbasic/zcleanup.h"
#include "zbasic/ztrace.h"

namespace {

constexpr char kSource[] = "zfileman.cpp";
constexpr unsigned kNoUuid = 102;
constexpr unsigned kNoReader = 219;
constexpr char kToolsSource[] = "ztools.cpp";
constexpr unsigned kNoNewUuid = 4085;

SV::String g_errorMessage;

}  // namespace

ZelBasicFileManager::ZelBasicFileManager() = default;
ZelSystemFileManager::ZelSystemFileManager() = default;

ZelSystemFileManager::ReadStringFromFileFct ZelSystemFileManager::pReadStringFromFileFct = nullptr;
SV::String ZelSystemFileManager::g_sLastFileName;
SV::String ZelSystemFileManager::g_sLastFileContent;

const SV::String& ZelBasicFileManager::getErrorMessage() { return g_errorMessage; }

void ZelBasicFileManager::_setErrorMessage(const SV::String& text) { g_errorMessage = text; }

void ZelBasicFileManager::_appendErrorMessage(const SV::String& text) { g_errorMessage += text; }

SV::String ZelSystemFileManager::getTempDirectory() {
    std::optional<SV::String> directory = environmentText("TEMP");
    if (!directory) directory = environmentText("TMP");
    return directory.value_or(SV::String());
}

SV::String ZelSystemFileManager::fileCreateTempName(const char* prefix, const char* extension) {
    SV::String name = getTempDirectory();
    const std::optional<SV::String> uuid = newUuidText();
    if (!uuid) {
        displayErrorMessage(kSource, kNoUuid);
        return {};
    }
    if (!std::string_view(name).ends_with('\\')) name += '\\';
    name += prefix;
    name += *uuid;
    if (extension) (name += '.') += extension;
    ZelCleanUp::Instance().AddFileCleanUpAction(name);
    return name;
}

long ZelSystemFileManager::readStringFromFile(SV::String& content, const SV::String& fileName,
                                              bool flag) {
    // Forgets the last file on every way out but the one that remembers the new one.
    struct Forgetter {
        bool isNeeded = true;
        ~Forgetter() {
            if (!isNeeded) return;
            g_sLastFileName.clear();
            g_sLastFileContent.clear();
        }
    } forgetter;
    if (!pReadStringFromFileFct) {
        displayErrorMessage(kSource, kNoReader);
        return -1;
    }
    const long result = pReadStringFromFileFct(content, fileName, flag);
    if (result != 0) return result;
    g_sLastFileName = fileName;
    g_sLastFileContent = content;
    forgetter.isNeeded = false;
    return 0;
}

// Relied on by callers: false for an empty text even when the last file was empty.
bool ZelSystemFileManager::IsContentOfLastFile(const SV::String& text) {
    return !g_sLastFileName.empty() && !g_sLastFileContent.empty() && text == g_sLastFileContent;
}

SV::String ZelSystemFileManager::GetLastFileName() { return g_sLastFileName; }

SV::String ZelSystemFileManager::GetLastFileContent() { return g_sLastFileContent; }

SV::String Zel_GetNewUUID() {
    const std::optional<SV::String> uuid = newUuidText();
    if (!uuid) {
        displayErrorMessage(kToolsSource, kNoNewUuid);
        return {};
    }
    return uuid->Lower();
}
