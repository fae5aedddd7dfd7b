// Resource and help files of the current language.

#include <algorithm>
#include <cstdio>
#include <utility>

#include "diag/format.h"
#include "sv/application.h"
#include "sv/path.h"
#include "time/buttontexts.h"
#include "zbasic/zinter.h"
#include "zbasic/ztrace.h"

#include <windows.h>

namespace {

constexpr int kVersion = 18;
constexpr char kVersionAndExtension[] = "18.dll";
constexpr std::size_t kNameLimit = 258;

constexpr char kFailureCaption[] = "Zelkit: error loading resource file";
constexpr unsigned kFailureStyle = MB_ICONERROR | MB_TASKMODAL | MB_TOPMOST;
static_assert(kFailureStyle == 0x42010);
constexpr char kUnnamedLanguage[] = "default";

// Raises a flag for as long as it lives.
class Raised {
public:
    explicit Raised(bool& flag) : m_flag(flag), m_before(std::exchange(flag, true)) {}
    Raised(const Raised&) = delete;
    Raised& operator=(const Raised&) = delete;
    ~Raised() { m_flag = m_before; }

private:
    bool& m_flag;
    const bool m_before;
};

using Managers = std::vector<std::unique_ptr<SV::ResMgr>>;

// At its end, however that comes.
class FirstBecomesCurrent {
public:
    explicit FirstBecomesCurrent(const Managers& managers) : m_managers(managers) {}
    FirstBecomesCurrent(const FirstBecomesCurrent&) = delete;
    FirstBecomesCurrent& operator=(const FirstBecomesCurrent&) = delete;
    ~FirstBecomesCurrent() {
        if (!m_managers.empty()) SV::Resource::SetResManager(m_managers.front().get());
    }

private:
    const Managers& m_managers;
};

SV::String cut(const SV::String& name) { return name.substr(0, kNameLimit); }

void tellFailure(const SV::String& fileName) {
    SV::String language = ZelInternational::GetNativeLanguageName();
    if (language.empty()) language = kUnnamedLanguage;
    const SV::String what =
        formatted("Failed to load the resource file '%s' for the selected language '%s'.\n",
                  fileName.c_str(), language.c_str());
    constexpr char kAdvice[] = "Please change your language selection.";
    ZelDebugOut(formatted("[locale] %s         %s", what.c_str(), kAdvice).c_str());
    // Even when modal dialogs are suppressed: the program runs with texts missing.
    SV::ShowMessageBox(nullptr, what + kAdvice, kFailureCaption, kFailureStyle);
}

// The base name in a name of a resource file.
SV::String baseNameOf(const SV::String& fileName) {
    const SV::String name = fileName.substr(fileName.rfind('\\') + 1);
    const std::size_t tail = sizeof kVersionAndExtension - 1;
    return name.substr(0, name.size() > tail ? name.size() - tail : 0);
}

bool isInLanguageFolder(const SV::String& fileName) {
    return std::ranges::count(std::string_view(fileName), '\\') > 1;
}

SV::String inProgramDirectory(const SV::String& name) {
    return SV::IsAbsolutePath(name) ? name : SV::GetProgramDirectory() + name;
}

bool isFile(const SV::String& path) {
    const DWORD attributes = ::GetFileAttributesA(path.c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && !(attributes & FILE_ATTRIBUTE_DIRECTORY);
}

}  // namespace

SV::String ZelInternational::buildResDLLName(const SV::String& baseName, bool withLanguage) {
    if (!withLanguage) return cut(formatted("language\\%s%d.dll", baseName.c_str(), kVersion));
    return cut(
        formatted("language\\%d\\%s%d.dll", GetCurrentLanguageID(), baseName.c_str(), kVersion));
}

SV::String ZelInternational::buildResDLLNameFallback(const SV::String& baseName) {
    return cut(formatted("%s%d.dll", baseName.c_str(), kVersion));
}

bool ZelInternational::createResourceManager(const SV::String& baseName, bool withLanguage) {
    const SV::String name = buildResDLLName(baseName, withLanguage);
    ZelDebugOut(formatted("[locale] Loading resource DLL %s\n", name.c_str()).c_str());
    if (aInstance.load(name)) return true;
    const SV::String fallback = buildResDLLNameFallback(baseName);
    ZelDebugOut(
        formatted("[locale] Error! Loading fallback resource DLL %s\n", fallback.c_str()).c_str());
    if (aInstance.load(fallback)) return true;
    tellFailure(name);
    aInstance.m_hasFailed = true;
    return false;
}

bool ZelInternational::load(const SV::String& fileName) {
    std::unique_ptr<SV::ResMgr> manager;
    {
        const Raised loading(m_isLoading);
        manager = std::make_unique<SV::ResMgr>(fileName);
    }
    if (!manager->IsLoaded()) return false;
    m_managers.push_back(std::move(manager));
    if (!std::exchange(m_isManagerInstalled, true)) {
        SV::Resource::SetResManager(m_managers.back().get());
    }
    return true;
}

bool ZelInternational::isLoadingResourceFile() { return aInstance.m_isLoading; }

bool ZelInternational::errorLoadingResourceFiles() { return aInstance.m_hasFailed; }

void ZelInternational::updateResourceManagers() {
    Managers& managers = aInstance.m_managers;
    SV::Resource::SetResManager(nullptr);
    const FirstBecomesCurrent afterwards(managers);
    for (std::size_t left = managers.size(); left > 0; --left) {
        // Relied on by callers: a file that once came from beside the program stays
        // there, for only names with two backslashes lead into a language folder.
        const SV::String& name = managers.front()->GetFileName();
        createResourceManager(baseNameOf(name), isInLanguageFolder(name));
        // Loaded until its successor is: a message needs texts, too, and memory may be out.
        managers.erase(managers.begin());
    }
}

SV::ResMgr* ZelInternational::getNextResMgr() {
    const auto& managers = aInstance.m_managers;
    const auto current =
        std::ranges::find(managers, SV::Resource::GetResManager(),
                          [](const std::unique_ptr<SV::ResMgr>& manager) { return manager.get(); });
    if (current == managers.end() || current + 1 == managers.end()) return nullptr;
    return (current + 1)->get();
}

void ZelInternational::DeleteResMgrs() {
    aInstance.m_managers.clear();
    aInstance.m_isManagerInstalled = false;
}

void ZelInternational::updateApplicationTexts() {
    SV::Application* const application = SV::GetpApp();
    if (!application) return;
    application->ChangeAppInternational(withButtonTexts(application->GetAppInternational()));
}

void ZelInternational::switchHelpObject(const SV::String& toolName) {
    aInstance.m_toolName = toolName;
    SV::String file =
        inProgramDirectory(formatted("help\\%d\\%s.chm", GetCurrentLanguageID(), toolName.c_str()));
    if (!isFile(file)) file = inProgramDirectory(toolName + ".chm");
    ZelDebugOut(formatted("[zel] Using help file '%s'\n", file.c_str()).c_str());
    SV::Application* const application = SV::GetpApp();
    if (application && application->GetHelp()) {
        application->GetHelp()->Enable(SV::Help::kFullHelp, file);
    }
}
