#include <vector>

#include "sv/window.h"
#include "zbasic/zevent.h"
#include "zbasic/zgui.h"

namespace {

std::vector<SV::Window*>& stack() {
    // Never destroyed: work at process exit may still ask.
    static std::vector<SV::Window*>& windows = *new std::vector<SV::Window*>;
    return windows;
}

void announce(bool isAdded, const SV::Window* window) {
    const auto depth = static_cast<long>(stack().size());
    ZelWindowStackChangedEvent(depth, isAdded, window ? window->GetText() : SV::String()).trigger();
}

}  // namespace

void Zel_PushParentWindow(SV::Window* window) {
    stack().push_back(window);
    announce(true, window);
}

void Zel_PopParentWindow() {
    if (stack().empty()) return;
    const SV::Window* const window = stack().back();
    stack().pop_back();
    announce(false, window);
}

SV::Window* Zel_GetTopParentWindow() { return stack().empty() ? nullptr : stack().back(); }
