#include "hostframe.h"

#include <algorithm>

#include "exporter.h"
#include "filter_dialog.h"
#include "hostapp.h"
#include "model/node_times.h"
#include "paths.h"
#include "sv/systemfunction.h"
#include "texts.h"
#include "time_texts.h"
#include "zbasic/zdattime.h"
#include "zbasic/zinter.h"
#include "zbasic/zprocess.h"
#include "zbasic/ztools.h"
#include "zbasic/zversion.h"

#include <windows.h>
#include <commdlg.h>

namespace zelhost {

namespace {

constexpr unsigned short kEnglishLanguage = 1033;
constexpr unsigned short kGermanLanguage = 1031;
constexpr int kViewMenu = 1;  // position; the open windows are listed below its entries

void showBox(const SV::String& caption, const SV::String& text) {
    if (SV::Application::IsModalDialogSuppression()) return;
    SV::ShowMessageBox(SV::Application::GetAppWindow(), text, caption, MB_OK | MB_ICONINFORMATION);
}

void showBox(Text title, const SV::String& text) {
    SV::String caption = textOf(title);  // may be that of a menu, with its access key
    caption.erase(std::min(caption.find('&'), caption.size()), 1);
    showBox(caption, text);
}

// The common dialogs bring half of the system with them.
bool askForFile(OPENFILENAMEA& question) {
    auto* const ask =
        SV::SystemFunction<decltype(::GetOpenFileNameA)>("comdlg32.dll", "GetOpenFileNameA");
    return ask && ask(&question);
}

SV::Menu exportedMenu() {
    SV::Menu menu;
    int id = HostFrame::kOpenExported;
    for (const std::string& pattern : exportFileNames("*")) menu.Append(id++, SV::String(pattern));
    return menu;
}

SV::Menu fileMenu() {
    SV::Menu menu;
    menu.Append(HostFrame::kOpen, textOf(Text::kMenuOpen));
    menu.Append(HostFrame::kExport, textOf(Text::kMenuExport));
    menu.Append(exportedMenu(), textOf(Text::kMenuOpenExported));
    menu.AppendSeparator();
    menu.Append(HostFrame::kExit, textOf(Text::kMenuExit));
    return menu;
}

SV::Menu viewMenu() {
    const unsigned short language = ZelInternational::GetCurrentLanguageID();
    SV::Menu menu;
    menu.AppendChecked(HostFrame::kEnglish, textOf(Text::kMenuEnglish),
                       language == kEnglishLanguage);
    menu.AppendChecked(HostFrame::kGerman, textOf(Text::kMenuGerman), language == kGermanLanguage);
    menu.AppendSeparator();
    menu.Append(HostFrame::kFilter, textOf(Text::kMenuFilter));
    menu.AppendSeparator();
    menu.Append(HostFrame::kTile, textOf(Text::kMenuTile));
    menu.Append(HostFrame::kCascade, textOf(Text::kMenuCascade));
    return menu;
}

// "&" marks an access key.
SV::String menuTextOf(const std::string& command) {
    std::string text;
    for (const char c : command) text.append(c == '&' ? 2 : 1, c);
    return SV::String(text);
}

SV::Menu pluginMenu(const std::vector<std::string>& commands) {
    SV::Menu menu;
    int id = HostFrame::kFirstPlugin;
    for (const std::string& command : commands) menu.Append(id++, menuTextOf(command));
    return menu;
}

SV::Menu helpMenu() {
    SV::Menu menu;
    menu.Append(HostFrame::kAbout, textOf(Text::kMenuAbout));
    return menu;
}

}  // namespace

HostFrame::HostFrame(HostApplication& application)
    : SV::MDIFrame("zelhost"), m_application(application) {
    buildMenu();
}

void HostFrame::buildMenu() {
    SV::Menu bar(SV::Menu::Kind::kBar);
    bar.Append(fileMenu(), textOf(Text::kMenuFile));
    bar.Append(viewMenu(), textOf(Text::kMenuView));
    const std::vector<std::string> commands = m_application.commands().names();
    if (!commands.empty()) bar.Append(pluginMenu(commands), textOf(Text::kMenuPlugins));
    bar.Append(helpMenu(), textOf(Text::kMenuHelp));
    SetMenu(std::move(bar), kViewMenu);
}

void HostFrame::show(std::shared_ptr<const Model> model) {
    dropClosedWindows();
    m_windows.push_back(std::make_unique<ModelWindow>(*this, std::move(model)));
    Tile();
    m_application.Reschedule();
}

void HostFrame::showProgress(const std::string& name, int percent) {
    SetText(SV::String("zelhost - " + name + ": " + std::to_string(percent) + " %"));
}

void HostFrame::updateTitle() { SetText("zelhost"); }

void HostFrame::dropClosedWindows() {
    std::erase_if(m_windows, [](const auto& window) { return !window->GetHandle(); });
}

void HostFrame::Command(int id) {
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
        default:
            break;
    }
}

void HostFrame::openFile() {
    const SV::String filterText = textOf(Text::kOpenFilter);
    std::string filter(filterText.begin(), filterText.end());
    std::ranges::replace(filter, '|', '\0');  // the system separates by NUL
    const SV::String title = textOf(Text::kOpenTitle);
    char path[4096] = "";
    OPENFILENAMEA question = {};
    question.lStructSize = sizeof question;
    question.hwndOwner = GetHandle();
    question.lpstrFilter = filter.c_str();
    question.lpstrFile = path;
    question.nMaxFile = sizeof path;
    question.lpstrTitle = title.c_str();
    const std::string extension = modelExtension();
    question.lpstrDefExt = extension.c_str();
    question.Flags = OFN_FILEMUSTEXIST | OFN_HIDEREADONLY | OFN_NOCHANGEDIR;
    if (!askForFile(question)) return;
    m_application.open(path);
    m_application.showProblems();
}

void HostFrame::exportActive() {
    const std::shared_ptr<const Model> model = activeModel();
    if (!model) return showBox(Text::kProblemsTitle, textOf(Text::kNothingToExport));
    if (m_application.save(*model)) {
        showBox(Text::kMenuExport, filled(Text::kExportedTo, m_application.outputDirectory()));
    }
    m_application.showProblems();
}

void HostFrame::openExported(std::size_t index) {
    const std::shared_ptr<const Model> model = activeModel();
    if (!model) return showBox(Text::kProblemsTitle, textOf(Text::kNothingToExport));
    const std::vector<std::string> names = exportFileNames(model->name);
    if (index >= names.size()) return;
    const std::string path = m_application.outputDirectory() + "\\" + names[index];
    if (!Zel_FileExists(path.c_str())) {
        return showBox(Text::kProblemsTitle, filled(Text::kNotExported, path));
    }
    ZelAsynchronousProcess(SV::String(path)).Execute(this);  // the shell says why it cannot
}

std::shared_ptr<const Model> HostFrame::activeModel() const {
    const auto* const window = static_cast<const ModelWindow*>(GetActiveChild());
    return window ? window->model() : nullptr;
}

void HostFrame::runCommand(std::size_t index) {
    const std::vector<std::string> commands = m_application.commands().names();
    if (index >= commands.size()) return;
    const Commands::Answer answer = m_application.run(commands[index], activeModel());
    SV::String text(answer.text);
    if (!answer.isDone) text = filled(Text::kCommandFailed, commands[index]) + text;
    showBox(SV::String(commands[index]), text);
}

// Shows, beside the model, its part that was changed from a day on.
void HostFrame::filterActive() {
    const std::shared_ptr<const Model> model = activeModel();
    const std::string last = model ? timesOf(model->graph).lastChange : std::string();
    if (last.empty()) return showBox(Text::kProblemsTitle, textOf(Text::kNothingToFilter));
    FilterDialog dialog(this, dayOf(last));
    if (dialog.Execute() != FilterDialog::kOk || !dialog.isFiltered()) return;
    const SV::Date since = dialog.since();
    auto part = std::make_shared<Model>(*model);
    part->graph.keepNodesThat([&](const Node& node) {
        const std::string changed = changeOf(part->graph, node);
        return !changed.empty() && dayOf(changed) >= since;
    });
    const SV::String title = filled(Text::kChangedSince, shownDay(since));
    part->path += std::string(" - ") + title.c_str();
    part->name += "_since_" + std::string(ZelDate::GetFormatedDate(since, "yyyy-mm-dd").c_str());
    show(std::move(part));
}

void HostFrame::about() {
    ZelApplicationInfo::SetValue("Language", ZelInternational::GetNativeLanguageName(
                                                 ZelInternational::GetCurrentLanguageID()));
    showBox(Text::kAboutTitle,
            "zelhost " + Zel_GetVersionString() + "\n\n" + ZelApplicationInfo::GetInfo());
}

void HostFrame::switchLanguage(unsigned short language) {
    ZelInternational::SetCurrentLanguageID(language);
    buildMenu();
    dropClosedWindows();
    for (const auto& window : m_windows) window->languageChanged();
}

}  // namespace zelhost
