// The program's window: menus, and one child window a model.

#pragma once

#include <memory>
#include <string>
#include <vector>

#include "model_window.h"

namespace zelhost {

class HostApplication;

class HostFrame : public SV::MDIFrame {
public:
    enum CommandId : int {
        kOpen = 100,
        kExport,
        kExit,
        kEnglish,
        kGerman,
        kTile,
        kCascade,
        kAbout,
        kFilter,
        kStop,                // the work of the moment or, without any, the filter
        kOpenExported = 200,  // the first of the exported files; the others follow
        kFirstPlugin = 1000,  // one for each command of the plug-ins
    };

    explicit HostFrame(HostApplication& application);

    void show(std::shared_ptr<const Model> model);
    void showProgress(const SV::String& text);
    void updateTitle();
    std::shared_ptr<const Model> activeModel() const;  // null without one

private:
    void Command(int id) override;
    std::intptr_t handle(unsigned message, std::uintptr_t wParam, std::intptr_t lParam) override;
    ModelWindow* activeWindow() const;  // null without one
    void stop();
    void buildMenu();
    void openFile();
    void exportActive();
    void openExported(std::size_t index);
    void runCommand(std::size_t index);
    void filterActive();
    void about();
    void switchLanguage(unsigned short language);
    void dropClosedWindows();

    HostApplication& m_application;
    std::vector<std::unique_ptr<ModelWindow>> m_windows;
};

}  // namespace zelhost
