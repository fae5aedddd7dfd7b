#include "sv/application.h"
#include "text/matchererror.h"
#include "zbasic/zgui.h"

void showMatcherError(const SV::String& message) {
    ZelErrorBox(SV::Application::GetAppWindow(), ZelMessageBox::kOk, message).Execute();
}
