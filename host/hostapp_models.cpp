// What the program does with models.

#include <cstdio>
#include <new>

#include "exporter.h"
#include "hostapp.h"
#include "hostframe.h"
#include "model/gml_reader.h"
#include "model/node_times.h"
#include "model_events.h"
#include "paths.h"
#include "picture.h"
#include "side_task.h"
#include "stopwatch.h"
#include "user_break.h"
#include "work_progress.h"
#include "zbasic/ztrace.h"

namespace zelhost {

int HostApplication::process(const std::string& path) {
    try {
        return importAndExport(path);
    } catch (const std::bad_alloc&) {  // the other models may have enough
        Message problem(kNoMemoryForGraph);
        problem.place = path;
        report(problem, Text::kAdviceFile);
        return kSomeFailed;
    }
}

int HostApplication::importAndExport(const std::string& path) {
    const Work work(*this);
    if (!isWorkWanted()) return kStopped;
    const auto start = Clock::now();
    const std::shared_ptr<const Model> model = open(path);
    if (!model) return isWorkWanted() ? kSomeFailed : kStopped;
    std::printf("%s: %zu nodes, %zu edges\n", path.c_str(), model->graph.nodes.size(),
                model->graph.edges.size());
    if (const NodeTimes times = timesOf(model->graph); times.durations > 0) {
        std::printf("  duration %s of %zu nodes\n", times.total.asChar(), times.durations);
    }
    bool isDone = save(*model);
    if (!isDone && !isWorkWanted()) return kStopped;
    isDone = runCommands(model) && isDone;
    std::printf("  %.3f s\n", secondsSince(start));
    std::fflush(stdout);
    return isDone ? kDone : kSomeFailed;
}

void HostApplication::beginWork() {
    if (m_works++ > 0) return;
    m_isStopped = false;
    if (m_frame) Wait(true);  // without windows there is no pointer to show it
}

void HostApplication::endWork() {
    if (--m_works == 0 && m_frame) Wait(false);
}

void HostApplication::stopWork() { m_isStopped = true; }

bool HostApplication::isWorkWanted() const {
    return !m_isStopped && !isBreakWanted() && !isClosed();
}

void HostApplication::noteStop(const std::string& path) {
    const std::string text = path + ": stopped by the user";
    log(text);
    std::fprintf(stderr, "%s\n", text.c_str());
}

bool HostApplication::read(Model& model) {
    const GmlResult result = [&] {
        WorkProgress progress(*this, m_frame.get(), fileNameOf(model.path));
        return readGml(model.path, model.graph,
                       [&](double percent) { return progress.reading(percent); });
    }();
    if (result.status == GmlResult::Status::failed) {
        report(result.problemIn(model.path),
               result.line > 0 ? Text::kAdviceModel : Text::kAdviceFile);
    }
    if (result.status != GmlResult::Status::done) return false;
    for (const Message& remark : result.remarksIn(model.path)) {
        report(remark, Text::kAdviceRemarks);
    }
    if (m_filter) m_filter->apply(model.graph);
    return true;
}

// Beside the main thread, which meanwhile attends to the windows.
bool HostApplication::draw(Model& model) {
    if (!m_frame || isClosed()) return true;
    WorkProgress progress(*this, m_frame.get(), fileNameOf(model.path));
    SideTask<SV::Image> picture(
        [&](const std::stop_token& stop) { return drawPicture(model.graph, 1, stop); });
    if (!picture.wait([&] { return progress.drawing(); })) return false;
    model.picture = std::make_shared<const SV::Image>(picture.take());
    return true;
}

std::shared_ptr<const Model> HostApplication::open(const std::string& path) {
    const Work work(*this);
    auto model = std::make_shared<Model>();
    model->path = path;
    if (!read(*model) || !draw(*model)) {
        if (!isWorkWanted()) noteStop(path);
        return nullptr;
    }
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
        Message veto("not saved: a listener of the program objects");
        veto.place = model.path;
        report(veto, Text::kAdviceVeto);
        return false;
    }
    const ExportResult result = [&] {
        WorkProgress progress(*this, m_frame.get(), model.name);
        return exportModel(model.graph, model.picture.get(), m_options.outputDirectory, model.name,
                           [&](const std::string& file) { return progress.writing(file); });
    }();
    if (result.isCancelled) {
        noteStop(model.path);
        return false;
    }
    for (const std::string& file : result.files) std::printf("  %s\n", file.c_str());
    if (!result.problem.empty()) {
        report(result.problem, Text::kAdviceExport);
        return false;
    }
    ModelEvent(ZelEvent_SaveModel, name, model.graph).trigger();
    log(model.path + " is exported to " + m_options.outputDirectory);
    Zel_Trace("zelhost: %s is saved", model.path.c_str());
    return true;
}

std::shared_ptr<const Model> HostApplication::findModel(const std::string& name) const {
    if (name.empty()) return m_current || !m_frame ? m_current : m_frame->activeModel();
    for (const std::weak_ptr<const Model>& entry : m_open) {
        std::shared_ptr<const Model> model = entry.lock();
        if (model && model->name == name) return model;
    }
    return nullptr;
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

}  // namespace zelhost
