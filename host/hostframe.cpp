#include "hostframe.h"

#include "boxes.h"
#include "exporter.h"
#include "file_question.h"
#include "filter_dialog.h"
#include "hostapp.h"
#include "hostkeys.h"
#include "hostmenu.h"
#include "model/node_times.h"
#include "paths.h"
#include "texts.h"
#include "time_texts.h"
#include "zbasic/zdattime.h"
#include "zbasic/zinter.h"
#include "zbasic/zprocess.h"
#include "zbasic/ztools.h"
#include "zbasic/zversion.h"

#include <windows.h>

namespace zelhost {

HostFrame::HostFrame(HostApplication& application)
    : SV::MDIFrame("zelhost"), m_application(application) {
    buildMenu();
}

void HostFrame::buildMenu() { SetMenu(menuBar(m_application.commands().names()), kViewMenu); }

void HostFrame::show(std::shared_ptr<const Model> model) {
    dropClosedWindows();
    m_windows.push_back(std::make_unique<ModelWindow>(*this, std::move(model)));
    Tile();
    m_application.Reschedule();
}

void HostFrame::showProgress(const SV::String& text) { SetText("zelhost - " + text); }

void HostFrame::updateTitle() { SetText("zelhost"); }

void HostFrame::dropClosedWindows() {
    std::erase_if(m_windows, [](const auto& window) { return !window->GetHandle(); });
}

std::intptr_t HostFrame::handle(unsigned message, std::uintptr_t wParam, std::intptr_t lParam) {
    if (message == WM_KEYDOWN && carryOutKey(*this, wParam)) return 0;
    return SV::MDIFrame::handle(message, wParam, lParam);
}

void HostFrame::Command(int id) {
    // Work on one model does not begin in the middle of that on another.
    if (m_application.IsWait() && id != kStop && id != kExit) return;
    // Numbers that stand for the entries of a list, and those of single commands.
    if (id >= kFirstPlugin) return runCommand(static_cast<std::size_t>(id - kFirstPlugin));
    if (id >= kOpenExported) return openExported(static_cast<std::size_t>(id - kOpenExported));
    switch (id) {
        case kOpen:
            return openFile();
        case kExport:
            return exportActive();
        case kExit:
            return Close();
        case kEnglish:
            return switchLanguage(kEnglishLanguage);
        case kGerman:
            return switchLanguage(kGermanLanguage);
        case kTile:
            return Tile();
        case kCascade:
            return Cascade();
        case kAbout:
            return about();
        case kFilter:
            return filterActive();
        case kStop:
            return stop();
        default:
            break;
    }
}

void HostFrame::openFile() {
    const std::optional<std::string> path = askForModel(*this);
    if (!path) return;
    m_application.open(*path);
    m_application.showProblems();
}

void HostFrame::exportActive() {
    const std::shared_ptr<const Model> model = activeModel();
    if (!model) return showProblem(textOf(Text::kNoModel));
    if (m_application.save(*model)) {
        showBox(Text::kMenuExport,
                filled(filled(Text::kExportedTo, model->name), m_application.outputDirectory()));
    }
    m_application.showProblems();
}

void HostFrame::openExported(std::size_t index) {
    const std::shared_ptr<const Model> model = activeModel();
    if (!model) return showProblem(textOf(Text::kNoModel));
    const std::vector<std::string> names = exportFileNames(model->name);
    if (index >= names.size()) return;
    const std::string path = m_application.outputDirectory() + "\\" + names[index];
    if (!Zel_FileExists(path.c_str())) {
        return showProblem(filled(Text::kNotExported, path));
    }
    ZelAsynchronousProcess(SV::String(path)).Execute(this);  // the shell says why it cannot
}

std::shared_ptr<const Model> HostFrame::activeModel() const {
    const ModelWindow* const window = activeWindow();
    return window ? window->model() : nullptr;
}

ModelWindow* HostFrame::activeWindow() const { return static_cast<ModelWindow*>(GetActiveChild()); }

void HostFrame::stop() {
    if (m_application.IsWait()) return m_application.stopWork();
    if (ModelWindow* const window = activeWindow()) window->clearFilter();
}

void HostFrame::runCommand(std::size_t index) {
    const std::vector<std::string> commands = m_application.commands().names();
    if (index >= commands.size()) return;
    const std::shared_ptr<const Model> model = activeModel();
    const Commands::Answer answer = m_application.run(commands[index], model);
    SV::String text(answer.text);
    if (answer.isDone) return showBox(SV::String(commands[index]), text);
    const Text advice = model ? Text::kAdviceCommand : Text::kNoModel;
    showProblem(filled(Text::kCommandFailed, commands[index]) + text + "\n\n" + textOf(advice));
}

// Shows, beside the model, its part that was changed from a day on.
void HostFrame::filterActive() {
    const std::shared_ptr<const Model> model = activeModel();
    if (!model) return showProblem(textOf(Text::kNoModel));
    const std::string last = timesOf(model->graph).lastChange;
    if (last.empty()) {
        return showProblem(filled(Text::kNothingToFilter, model->path));
    }
    FilterDialog dialog(this, dayOf(last));
    if (dialog.Execute() != FilterDialog::kOk || !dialog.isFiltered()) return;
    const SV::Date since = dialog.since();
    auto part = std::make_shared<Model>(*model);
    part->graph.keepNodesThat([&](const Node& node) {
        const std::string changed = changeOf(part->graph, node);
        return !changed.empty() && dayOf(changed) >= since;
    });
    part->picture.reset();  // was that of the whole
    part->since = since;
    part->name += "_since_" + std::string(ZelDate::GetFormatedDate(since, "yyyy-mm-dd").c_str());
    show(std::move(part));
}

void HostFrame::about() {
    SV::String text = textOf(Text::kAbout);
    for (const SV::String& value :
         {Zel_GetVersionString(), Zel_GetPatchBuildVersionString(), Zel_GetDataVersion(),
          ZelInternational::GetNativeLanguageName(ZelInternational::GetCurrentLanguageID())}) {
        text = filled(text, value);
    }
    showBox(Text::kAboutTitle, text);
}

void HostFrame::switchLanguage(unsigned short language) {
    ZelInternational::SetCurrentLanguageID(language);
    buildMenu();
    dropClosedWindows();
    for (const auto& window : m_windows) window->languageChanged();
}

}  // namespace zelhost
