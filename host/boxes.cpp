#include "boxes.h"

#include <algorithm>

#include "sv/application.h"

#include <windows.h>

namespace zelhost {

namespace {

void show(const SV::String& caption, const SV::String& text, unsigned icon) {
    if (SV::Application::IsModalDialogSuppression()) return;
    SV::ShowMessageBox(SV::Application::GetAppWindow(), text, caption, MB_OK | icon);
}

}  // namespace

void showBox(const SV::String& caption, const SV::String& text) {
    show(caption, text, MB_ICONINFORMATION);
}

void showBox(Text title, const SV::String& text) {
    SV::String caption = textOf(title);  // may be that of a menu, with its keys
    caption.erase(std::min(caption.find('\t'), caption.size()));
    caption.erase(std::min(caption.find('&'), caption.size()), 1);
    showBox(caption, text);
}

void showProblem(const SV::String& text) {
    show(textOf(Text::kProblemsTitle), text, MB_ICONWARNING);
}

}  // namespace zelhost
