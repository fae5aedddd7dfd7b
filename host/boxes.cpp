#include "boxes.h"

#include <algorithm>

#include "sv/application.h"

#include <windows.h>

namespace zelhost {

void showBox(const SV::String& caption, const SV::String& text) {
    if (SV::Application::IsModalDialogSuppression()) return;
    SV::ShowMessageBox(SV::Application::GetAppWindow(), text, caption, MB_OK | MB_ICONINFORMATION);
}

void showBox(Text title, const SV::String& text) {
    SV::String caption = textOf(title);  // may be that of a menu, with its keys
    caption.erase(std::min(caption.find('\t'), caption.size()));
    caption.erase(std::min(caption.find('&'), caption.size()), 1);
    showBox(caption, text);
}

}  // namespace zelhost
