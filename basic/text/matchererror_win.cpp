#include "sv/application.h"
#include "text/matchererror.h"
#include "zbasic/zgui.h"

void showMatcherError(const SV::String& message) {
    constexpr unsigned int kOkOnly = 16;
    ZelErrorBox(SV::Application::GetAppWindow(), kOkOnly, message).Execute();
}
