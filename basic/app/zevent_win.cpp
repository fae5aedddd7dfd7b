// The event that moves the focus: windows are not for sources without a system.

#include "sv/window.h"
#include "zbasic/zevent.h"

bool ZelBeforeGrabFocusEvent::GrabFocus(SV::Window* window) {
    ZelBeforeGrabFocusEvent question;
    question.trigger();
    if (question.getResultValue() != 0 || !window) return false;
    window->GrabFocus();
    return true;
}
