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

ZelWindowStackChangedEvent change(std::size_t depth, bool isAdded, const SV::Window* window) {
    return {static_cast<long>(depth), isAdded, window ? window->GetText() : SV::String()};
}

}  // namespace

void Zel_PushParentWindow(SV::Window* window) {
    // Made before anything changes: memory may be out.
    ZelWindowStackChangedEvent event = change(stack().size() + 1, true, window);
    stack().push_back(window);
    event.trigger();
}

void Zel_PopParentWindow() {
    if (stack().empty()) return;
    const SV::Window* const window = stack().back();
    stack().pop_back();  // first: the window may be about to go
    change(stack().size(), false, window).trigger();
}

SV::Window* Zel_GetTopParentWindow() { return stack().empty() ? nullptr : stack().back(); }
