// What a duration tells the user.

#include "zbasic/zcoretime.h"
#include "zbasic/zgui.h"

void ZelCoreTime::tstOverFlow(SV::Window* parent, const SV::String& message) {
    if (!m_overflow) return;
    m_value = m_maximum;
    if (g_bWarned) return;
    Zel_PushParentWindow(parent);
    ZelWarningBox(parent, ZelMessageBox::kOk, message).Execute();
    Zel_PopParentWindow();
    g_bWarned = true;
}
