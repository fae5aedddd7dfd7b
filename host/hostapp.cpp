#include "hostapp.h"

#include <chrono>
#include <cstdio>

#include "after.h"
#include "database_user.h"
#include "exporter.h"
#include "hostframe.h"
#include "model_call.h"
#include "model/gml_reader.h"
#include "model/node_times.h"
#include "model_events.h"
#include "paths.h"
#include "texts.h"
#include "zbasic/zcmdline.h"
#include "zbasic/ztrace.h"
#include "zbasic/zversion.h"

#include <windows.h>

namespace zelhost {

namespace {

constexpr int kLogBackups = 7;
constexpr char kLogFile[] = "zelhost.log";

using Clock = std::chrono::steady_clock;

double secondsSince(Clock::time_point start) {
    return std::chrono::duration<double>(Clock::now() - start).count();
}

// Tells how far the import is once it takes long: on standard error and in the frame's title.
class ImportProgress {
public:
    ImportProgress(HostApplication& application, HostFrame* frame, std::string name)
        : m_application(application), m_frame(frame), m_name(std::move(name)) {}
    ImportProgress(const ImportProgress&) = delete;
    ImportProgress& operator=(const ImportProgress&) = delete;
    ~ImportProgress() {
        if (m_lastPercent < 0) return;
        std::fputc('\n', stderr);
        if (m_frame) m_frame->updateTitle();
    }

    bool operator()(double percent) {
        constexpr double kPatience = 0.5;  // seconds
        const int whole = static_cast<int>(percent);
        if (whole == m_lastPercent || secondsSince(m_start) < kPatience) return true;
        m_lastPercent = whole;
        std::fprintf(stderr, "\r%s: %d %%", m_name.c_str(), whole);
        std::fflush(stderr);
        if (m_frame) m_frame->showProgress(m_name, whole);
        m_application.Reschedule();
        return !m_frame || m_frame->GetHandle();  // a closed frame ends the import
    }

private:
    HostApplication& m_application;
    HostFrame* const m_frame;
    const std::string m_name;
    const Clock::time_point m_start = Clock::now();
    int m_lastPercent = -1;
};

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
    std::string problem;
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
    }
    return 0;
}

int HostApplication::runApplication() {
    if (m_isUsageWanted) {
        std::fputs(kUsage, stdout);
        return kDone;
    }
    if (m_isUserWanted) return showDatabaseUser() ? kDone : kSomeFailed;
    if (m_frame) m_frame->Show();
    removeLeftovers(m_options.outputDirectory);
    int status = kDone;
    for (const std::string& path : m_options.models) {
        if (isClosed() || process(path) != kDone) status = kSomeFailed;
    }
    if (m_options.models.empty() && !runCommands(nullptr)) status = kSomeFailed;
    if (!m_options.after.empty() && !runAfter(status == kDone)) status = kSomeFailed;
    m_isAppInitialized = true;
    PlainEvent(ZelEvent_AppInitialized).trigger();
    PlainEvent(ZelEvent_AfterAppInitialized).trigger();
    Zel_Trace("zelhost: %d of %d models are open", static_cast<int>(m_names.size()),
              static_cast<int>(m_options.models.size()));
    showProblems();
    if (m_frame && !isClosed()) Execute();
    m_frame.reset();
    m_commands.discard();
    log("zelhost ends with status " + std::to_string(status));
    return status;
}

int HostApplication::process(const std::string& path) {
    const auto start = Clock::now();
    const std::shared_ptr<const Model> model = open(path);
    if (!model) return kSomeFailed;
    std::printf("%s: %zu nodes, %zu edges\n", path.c_str(), model->graph.nodes.size(),
                model->graph.edges.size());
    if (const NodeTimes times = timesOf(model->graph); times.durations > 0) {
        std::printf("  duration %s of %zu nodes\n", times.total.asChar(), times.durations);
    }
    bool isDone = save(*model);
    isDone = runCommands(model) && isDone;
    std::printf("  %.3f s\n", secondsSince(start));
    std::fflush(stdout);
    return isDone ? kDone : kSomeFailed;
}

std::shared_ptr<const Model> HostApplication::open(const std::string& path) {
    auto model = std::make_shared<Model>();
    model->path = path;
    Wait(true);
    const GmlResult result = [&] {
        ImportProgress progress(*this, m_frame.get(), fileNameOf(path));
        return readGml(path, model->graph, std::ref(progress));
    }();
    Wait(false);
    if (result.status == GmlResult::Status::cancelled) return nullptr;
    if (result.status != GmlResult::Status::done) {
        report(result.text(path));
        return nullptr;
    }
    if (result.remarkCount > 0) report(result.remarkText(path));
    if (m_filter) m_filter->apply(model->graph);
    model->name = freeName(path);
    m_open.push_back(model);
    log(path + ": " + std::to_string(model->graph.nodes.size()) + " nodes, " +
        std::to_string(model->graph.edges.size()) + " edges");
    ModelEvent(ZelEvent_OpenModel, SV::String(model->name), model->graph).trigger();
    Zel_Trace("zelhost: %s is open", path.c_str());
    if (m_frame && !isClosed()) m_frame->show(model);
    return model;
}

bool HostApplication::save(const Model& model) {
    const SV::String name(model.name);
    ModelEvent question(ZelEvent_BeforeSaveModel, name, model.graph);
    question.trigger();
    if (question.getResultValue() != 0) {
        report(model.path + ": not saved: a listener of the program objects");
        return false;
    }
    const ExportResult result = exportModel(model.graph, m_options.outputDirectory, model.name);
    for (const std::string& file : result.files) std::printf("  %s\n", file.c_str());
    if (!result.problem.empty()) {
        report(result.problem);
        return false;
    }
    ModelEvent(ZelEvent_SaveModel, name, model.graph).trigger();
    log(model.path + " is exported to " + m_options.outputDirectory);
    Zel_Trace("zelhost: %s is saved", model.path.c_str());
    return true;
}

bool HostApplication::runAfter(bool isAllExported) {
    if (!isAllExported) {
        report("the command behind the export was not run, as some model failed");
        return false;
    }
    const AfterResult result = runAfterExport(m_options.after, m_options.outputDirectory, [this] {
        if (m_frame) Reschedule();
    });
    if (!result.exitCode) {
        report(result.problem);
        return false;
    }
    std::printf("exit code %ld: %s\n", *result.exitCode, m_options.after.c_str());
    if (!result.output.empty()) std::printf("  %s\n", result.output.c_str());
    std::fflush(stdout);
    if (*result.exitCode == 0) return true;
    report("the command ended with exit code " + std::to_string(*result.exitCode) + ": " +
           m_options.after);
    return false;
}

std::shared_ptr<const Model> HostApplication::findModel(const std::string& name) const {
    if (name.empty()) return m_current || !m_frame ? m_current : m_frame->activeModel();
    for (const std::weak_ptr<const Model>& entry : m_open) {
        std::shared_ptr<const Model> model = entry.lock();
        if (model && model->name == name) return model;
    }
    return nullptr;
}

bool HostApplication::loadCommands(std::string& problem) {
    for (const std::string& line : m_commands.load()) log(line);
    for (const std::string& request : m_options.commands) {
        if (m_commands.isKnown(request)) continue;
        problem = "no plug-in has the command \"" + request + "\"";
        return false;
    }
    return true;
}

bool HostApplication::runCommands(const std::shared_ptr<const Model>& model) {
    bool isDone = true;
    for (const std::string& request : m_options.commands) {
        const Commands::Answer answer = run(request, model);
        if (answer.isDone) {
            std::printf("%s\n", answer.text.c_str());
        } else {
            report((model ? model->path + ": " : "") + "the command \"" + request + "\" failed" +
                   (answer.text.empty() ? "" : ": " + answer.text));
            isDone = false;
        }
    }
    return isDone;
}

Commands::Answer HostApplication::run(const std::string& request,
                                      std::shared_ptr<const Model> model) {
    m_current = std::move(model);
    Commands::Answer answer = m_commands.run(request);
    log("command " + request + (m_current ? " for " + m_current->name : "") +
        (answer.isDone ? ": done" : ": failed"));
    m_current.reset();
    return answer;
}

// Two models of one name (in different folders) must not overwrite each other's files.
std::string HostApplication::freeName(const std::string& path) {
    const std::string base = baseNameOf(path);
    std::string name = base;
    const auto isTaken = [this](const std::string& candidate) {
        const SV::String lower = SV::String(candidate).Lower();
        return !m_names.emplace(lower.begin(), lower.end()).second;
    };
    for (int number = 2; isTaken(name); ++number) name = base + "_" + std::to_string(number);
    return name;
}

bool HostApplication::isClosed() const { return m_frame && !m_frame->GetHandle(); }

bool HostApplication::getMDIClientImage(SV::Image& image, int& mode) {
    image = backgroundTile();
    mode = kTiled;
    return true;
}

int HostApplication::refuse(const std::string& problem) {
    log(problem);
    std::fprintf(stderr, "zelhost: %s\n\n%s", problem.c_str(), kUsage);
    return kWrongUsage;
}

void HostApplication::openLog() {
    // Where it cannot be written the program does without.
    m_log.open(Zel_GetStartCWDFilename(kLogFile).c_str(), true);
    log("zelhost " + std::string(Zel_GetPatchBuildVersionString().c_str()) + " starts");
}

void HostApplication::log(const std::string& text) { m_log.addText("%s", text.c_str()); }

void HostApplication::report(const std::string& problem) {
    log(problem);
    std::fprintf(stderr, "%s\n", problem.c_str());
    ZelDebugOut(("[zel] " + problem + "\n").c_str());
    m_problems += problem + "\n";
}

void HostApplication::showProblems() {
    if (m_problems.empty()) return;
    const SV::String text(m_problems);
    m_problems.clear();
    if (IsModalDialogSuppression()) {
        ModalDialogSuppressionLog(text);
    } else if (!isClosed()) {
        SV::ShowMessageBox(GetAppWindow(), text, textOf(Text::kProblemsTitle),
                           MB_OK | MB_ICONWARNING);
    }
}

void HostApplication::announcePhase(const char* text) {
    ZelAppChangeStartupPhaseEvent(text).trigger();
    Zel_Trace("%s", text);
}

}  // namespace zelhost
