#include "zbasic/zapp.h"

#include <cstdio>
#include <cstdlib>
#include <string>

#include "app/console.h"
#include "diag/librarytext.h"
#include "sv/resource.h"
#include "time/buttontexts.h"
#include "zbasic/zcmdline.h"
#include "zbasic/zevent.h"
#include "zbasic/zgui.h"
#include "zbasic/zinter.h"
#include "zbasic/zmlstring.h"
#include "zbasic/ztools.h"
#include "zbasic/ztrace.h"

#include <windows.h>

namespace {

constexpr std::uint32_t kDefaultCharSetText = 10507;

constexpr int kMinFontHeight = 4;
constexpr int kMaxFontHeight = 48;
constexpr int kDefaultFontHeight = 12;

constexpr char kDumpSource[] = "zapp";
constexpr unsigned long kDumpLine = 630;

std::FILE* g_traceFile = nullptr;
bool g_isHandlingException = false;  // a plain flag: it guards against re-entry, not threads

SV::String& startDirectory() {
    // Never destroyed: work at process exit may still ask.
    static SV::String& directory = *new SV::String;
    return directory;
}

void startTracing(const ZelCmdline& options) {
    Zel_EnableTracing(options.doTracing());
    const SV::String fileName = options.getTraceFilename();
    if (fileName.empty()) return;
    // "N": open all the time, but nothing for the programs that this one starts.
    g_traceFile = std::fopen(fileName.c_str(), "wtN");
    if (g_traceFile) Zel_TraceSetHandle(g_traceFile);
}

void stopTracing() {
    if (!g_traceFile) return;
    Zel_TraceSetHandle(nullptr);
    std::fclose(g_traceFile);
    g_traceFile = nullptr;
}

void setFont(SV::Application& application, const ZelCmdline& options) {
    SV::String face = options.getFontFace();
    if (face.empty()) face = Zel_IsAtLeastWindowsVista() ? "Segoe UI" : "MS Sans Serif";
    int height = options.getFontHeight();
    if (height < kMinFontHeight || height > kMaxFontHeight) height = kDefaultFontHeight;
    SV::Font font(face, {0, static_cast<int>(Zel_GetSystemDPIScaleY() * height)});
    font.ChangeTextColor(SV::Font::kWindowTextColor);
    font.ChangeFillColor(SV::Font::kWindowColor);
    font.ChangeTransparent(true);
    application.ChangeAppFont(font);
}

void setSuppression(const ZelCmdline& options) {
    SV::Application::SetModalDialogSuppression(options.modalDialogSuppression());
    SV::Application::SetModalDialogSuppressionLogfileName(
        options.getModalDialogSuppressionLogfileName());
    SV::Application::SetShowWindowSuppression(options.showWindowSuppression());
}

// 0 when nothing has that name.
std::uint16_t languageOf(const SV::String& text) {
    if (const int number = SV::h_atoi(text)) return static_cast<std::uint16_t>(number);
    using Lookup = std::uint16_t (*)(const SV::String&);
    const Lookup lookups[] = {
        ZelInternational::GetLanguageIDOfNativeLanguageName,
        ZelInternational::GetLanguageIDOfNativeCountryName,
        ZelInternational::GetLanguageIDOfEnglishLanguageName,
        ZelInternational::GetLanguageIDOfISO639,
    };
    for (const Lookup lookup : lookups) {
        if (const std::uint16_t id = lookup(text)) return id;
    }
    return 0;
}

void chooseLanguage(const ZelCmdline& options) {
    ZelInternational::InitAvailableLanguages();
    const SV::String wanted = options.getValue("lang");
    if (wanted.empty()) return;
    if (const std::uint16_t id = languageOf(wanted)) {
        ZelInternational::SetCurrentLanguageID(id);
        return;
    }
    ZelDebugOut(("[locale] The locale '" + wanted + "' could not be resolved!\n").c_str());
}

void writePidFile(const ZelCmdline& options) {
    const SV::String fileName = options.getPIDFileName();
    if (fileName.empty()) return;
    std::FILE* const file = std::fopen(fileName.c_str(), "wN");
    if (!file) return;
    std::fprintf(file, "%d\n", static_cast<int>(::GetCurrentProcessId()));
    std::fclose(file);
}

void rememberStartDirectory() {
    char directory[260] = "";
    ::GetCurrentDirectoryA(sizeof directory, directory);
    std::string path(directory);
    for (char& c : path) {
        if (c == '/') c = '\\';
    }
    if (!path.ends_with('\\')) path += '\\';
    startDirectory() = SV::String(path);
}

SV::String withDetail(const char* text, const char* label, unsigned long detail) {
    SV::String message(text);
    if (detail != 0) message += label + SV::String(std::to_string(detail));
    return message;
}

// What the user reads of a failure; `detail` is explained at `SV::Application::ExceptionCode`.
SV::String messageOf(const SV::String& name, long code, unsigned long detail) {
    const SV::String prefix = "[" + name;
    switch (code) {
        case SV::Application::kResourceMissing:
            return prefix + withDetail("-10001]\nInternal error loading a resource.",
                                       "\nResource ID: ", detail);
        case SV::Application::kSystemObjectFailed:
            return prefix + withDetail("-10002]\nSystem object (e.g. window) could not be created.",
                                       "\nError code: ", detail);
        case SV::Application::kResourceFileFailed: {
            SV::String message = prefix + "-10004]\nInternal error loading a resource file.";
            if (detail != 0) {
                message += "\nResource file name: ";
                message += reinterpret_cast<const char*>(static_cast<std::uintptr_t>(detail));
            }
            return message;
        }
        default: {
            const SV::String number(std::to_string(code));
            return prefix +
                   withDetail(("-10003]\nGeneral exception " + number + " occured.")  // sic
                                  .c_str(),
                              "\nResource ID: ", detail);
        }
    }
}

// Failures that are no end of the program.
bool isDealtWith(long code) {
    if (code == SV::Application::kResourceMissing) {
        SV::ResMgr* const next = ZelInternational::getNextResMgr();
        if (next) SV::Resource::SetResManager(next);
        return next != nullptr;
    }
    // Another file will be tried, or a box of its own shown.
    return code == SV::Application::kResourceFileFailed &&
           ZelInternational::isLoadingResourceFile();
}

void reportAndLeave(const SV::String& name, long code, unsigned long detail) {
    const SV::String message = messageOf(name, code, detail) +
                               "\n\nThis is a severe error!!\n\nThe application will shut down "
                               "immediately!\n\nPlease inform your administrator!!";
    SV::ShowMessageBox(Zel_GetTopParentWindow(), message, name, MB_ICONERROR);
    Fct_CreateMiniDump(kDumpSource, kDumpLine);
    ZelExitAppEvent("exception (minidump)").trigger();
}

}  // namespace

ZelApplicationInterface::ZelApplicationInterface(const char* name, bool withGUI)
    : m_name(name), m_withGUI(withGUI) {}

void ZelApplicationInterface::_beforeMain(int argc, char** argv,
                                          const SV::String& dialogLogOption) {
    ZelCmdline::init(argc, argv, m_withGUI, dialogLogOption);
    const ZelCmdline& options = ZelCmdline::Instance();
    if (options.dynamicConsole()) openDynamicConsole();
    startTracing(options);
    if (SV::Application* const application = SV::GetpApp()) setFont(*application, options);
    setSuppression(options);
    SV::ImagePool::SetPoolFile(Zel_GetProgramPathFilename("zgfx.zip"));
    chooseLanguage(options);
    Zel_InitializeMultiLanguageStrings();
    writePidFile(options);
    rememberStartDirectory();
}

void ZelApplicationInterface::_beforeMain2() {
    SV::Application* const application = SV::GetpApp();
    if (!application) return;
    SV::String charSet = ZelCmdline::Instance().getUICharSet();
    if (charSet.empty()) charSet = libraryText(kDefaultCharSetText);
    if (!charSet.empty()) {
        SV::Font font = application->GetAppFont();
        font.ChangeCharSet(SV::h_atoi(charSet));
        application->ChangeAppFont(font);
    }
    application->ChangeAppInternational(withButtonTexts(SV::International()));
}

void ZelApplicationInterface::_afterMain(int status) {
    m_isAfterMain = true;
    ZelExitAppEvent("end(" + SV::String(std::to_string(status)) + ")").trigger();
    stopTracing();
    Zel_DeinitializeMultiLanguageStrings();
    SV::Application* const application = SV::GetpApp();
    if (application && m_help && application->GetHelp() == m_help.get()) {
        application->ChangeHelp(nullptr);
    }
    m_help.reset();
    ZelInternational::DeleteResMgrs();
    SV::Resource::SetResManager(nullptr);
}

bool ZelApplicationInterface::_handleException(long code, unsigned long detail) {
    if (g_isHandlingException) return false;
    struct Guard {
        Guard() { g_isHandlingException = true; }
        ~Guard() { g_isHandlingException = false; }
    } const guard;
    if (isDealtWith(code)) return true;
    reportAndLeave(m_name, code, detail);
    return false;
}

void ZelApplicationInterface::_onSystemSettingsChange(SV::SysChangeType type) {
    if (type == SV::SysChangeType::kVisualStyle) ZelThemeManager::Instance().SysThemeChanged();
    ZelSystemSettingsChangedEvent(type).trigger();
}

void ZelApplicationInterface::createHelpObject(const char* helpFile) {
    if (!m_help) {
        m_help = std::make_shared<SV::Help>();
        if (SV::Application* const application = SV::GetpApp()) {
            application->ChangeHelp(m_help.get());
        }
    }
    ZelInternational::switchHelpObject(helpFile);
}

bool ZelApplicationInterface::createResourceManager(const char* const name, bool withLanguage) {
    return ZelInternational::createResourceManager(name, withLanguage);
}

bool ZelApplicationInterface::IsWithGUI() {
    const auto* const self = dynamic_cast<ZelApplicationInterface*>(SV::GetpApp());
    return self && self->m_withGUI;
}

bool ZelApplicationInterface::IsAfterMain() {
    const auto* const self = dynamic_cast<ZelApplicationInterface*>(SV::GetpApp());
    return self && self->m_isAfterMain;
}

SV::String Zel_GetStartCWD(bool withTrailingSeparator) {
    const SV::String& directory = startDirectory();
    if (withTrailingSeparator || directory.empty()) return directory;
    return directory.substr(0, directory.size() - 1);
}

SV::String Zel_GetStartCWDFilename(const SV::String& name) { return startDirectory() + name; }
