#include "hostapp.h"

#include <algorithm>
#include <cstdio>
#include <new>

#include "boxes.h"
#include "database_user.h"
#include "hostframe.h"
#include "model_call.h"
#include "model_events.h"
#include "paths.h"
#include "user_break.h"
#include "zbasic/zcmdline.h"
#include "zbasic/ztrace.h"
#include "zbasic/zversion.h"

namespace zelhost {

namespace {

constexpr int kLogBackups = 7;

// A tile in two shades, quiet enough to lie behind models.
SV::Image backgroundTile() {
    constexpr int kSide = 48;
    constexpr std::uint32_t kLight = 0xD9E2EC, kDark = 0xD2DCE8;
    SV::Image tile({kSide, kSide});
    for (int y = 0; y < kSide; ++y) {
        for (int x = 0; x < kSide; ++x) {
            tile.GetRow(y)[x] = (x + y) / (kSide / 2) % 2 ? kLight : kDark;
        }
    }
    return tile;
}

}  // namespace

HostApplication::HostApplication(bool withGUI)
    : ZelMDIApplication("zelhost", withGUI, "log"), m_log(true, true, kLogBackups) {}

HostApplication::~HostApplication() = default;

int HostApplication::initApplication() {
    // The library takes the log's name only from programs that never have windows.
    SetModalDialogSuppressionLogfileName(ZelCmdline::Instance().getValue("log_no_dialogs"));
    // Only windows have texts; where files lack, the box about it waits for a user.
    const bool withWindows = IsWithGUI() && createResourceManager("zelhost", true);
    createResourceManager("zbasic", true);
    ZelApplicationInfo::SetValue("Program", "zelhost");
    ZelApplicationInfo::SetValue("Version", Zel_GetPatchBuildVersionString());
    ZelApplicationInfo::SetValue("Data version", Zel_GetDataVersion());
    announcePhase("zelhost: reading the command line");
    if (ZelCmdline::Instance().isFlag("?")) {
        m_isUsageWanted = true;
        return kDone;
    }
    if (ZelCmdline::Instance().isFlag("zdbuser")) {
        m_isUserWanted = true;
        return kDone;
    }
    Message problem;
    const std::optional<Options> options = readOptions(problem);
    if (!options) return refuse(problem);
    m_options = *options;
    if (IsWithGUI() && !withWindows) {
        std::fputs("zelhost: there are no windows without their texts (zelhost18.dll)\n", stderr);
    }
    if (!withWindows && m_options.models.empty()) return refuse("no model is named");
    if (m_options.match) {
        m_filter.emplace(SV::String(*m_options.match));
        if (!m_filter->isUsable()) return refuse("the pattern of -match cannot be used");
    }
    openLog();
    offerModels();
    if (!loadCommands(problem)) return refuse(problem);
    if (withWindows) {
        MakeMDIClientImg(false);
        m_frame = std::make_unique<HostFrame>(*this);
        closeOnBreak(m_frame.get());
    }
    // The library's console has its own answer.
    if (!ZelCmdline::Instance().isFlag("console")) watchForBreak();
    return 0;
}

int HostApplication::runApplication() {
    if (m_isUsageWanted) {
        tell(stdout, kUsage, kUsage);
        return kDone;
    }
    if (m_isUserWanted) {
        const DatabaseUser user = databaseUser();
        tell(stdout, inEnglish(user.text) + "\n", user.text);
        return user.isKnown ? kDone : kSomeFailed;
    }
    if (m_frame) m_frame->Show();
    removeLeftovers(m_options.outputDirectory);
    const int status = processAll();
    m_isAppInitialized = true;
    PlainEvent(ZelEvent_AppInitialized).trigger();
    PlainEvent(ZelEvent_AfterAppInitialized).trigger();
    Zel_Trace("zelhost: %d of %d models are open", static_cast<int>(m_names.size()),
              static_cast<int>(m_options.models.size()));
    showProblems();
    if (m_frame && !isClosed() && !isBreakWanted()) handleMessages();
    closeOnBreak(nullptr);
    m_frame.reset();
    m_commands.discard();
    log("zelhost ends with status " + std::to_string(status));
    return status;
}

// The command line.
int HostApplication::processAll() {
    int status = kDone;
    for (const std::string& path : m_options.models) {
        status = std::max(status, process(path));
        if (status == kStopped) return status;
    }
    if (m_options.models.empty() && !runCommands(nullptr)) status = kSomeFailed;
    if (!m_options.after.empty() && !runAfter(status == kDone)) status = kSomeFailed;
    return status;
}

// Where memory runs out only what was being done is given up. The user is told once: a window that
// cannot be painted would be painted behind the box, again and again.
void HostApplication::handleMessages() {
    for (bool isTold = false;; isTold = true) {
        try {
            return Execute();
        } catch (const std::bad_alloc&) {
            log("not enough memory: something was given up");
            if (!isTold) showProblem(textOf(Text::kNoMemory));
        }
    }
}

bool HostApplication::isClosed() const { return m_frame && !m_frame->GetHandle(); }

bool HostApplication::getMDIClientImage(SV::Image& image, int& mode) {
    image = backgroundTile();
    mode = kTiled;
    return true;
}

void HostApplication::announcePhase(const char* text) {
    ZelAppChangeStartupPhaseEvent(text).trigger();
    Zel_Trace("%s", text);
}

}  // namespace zelhost
