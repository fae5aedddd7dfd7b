#include "app/consolelistener.h"

#include "diag/format.h"
#include "zbasic/ztrace.h"

namespace {

// Before the library's own handlers, whose work may take long.
constexpr ZelEventPriority kPriority = 600;

}  // namespace

ZelDynamicConsoleListener::ZelDynamicConsoleListener() {
    const auto listen = [this](ZelEventType type, auto handler) {
        setEventHandler(type, static_cast<Handler>(handler), kPriority);
    };
    listen(ZelEvent_AppChangeStartupPhase, &ZelDynamicConsoleListener::onStartupPhase);
    listen(ZelEvent_AppInitialized, &ZelDynamicConsoleListener::onInitialized);
    listen(ZelEvent_AppExit, &ZelDynamicConsoleListener::onExit);
    listen(ZelEvent_ZelWindowStackChanged, &ZelDynamicConsoleListener::onWindowStack);
}

ZelDynamicConsoleListener::~ZelDynamicConsoleListener() = default;

// Programs may announce a type by a class of their own: then there is nothing to show.
void ZelDynamicConsoleListener::onStartupPhase(ZelEvent* event) {
    const auto* phase = dynamic_cast<const ZelAppChangeStartupPhaseEvent*>(event);
    if (phase) ZelDebugOut((phase->GetText() + "\n").c_str());
}

void ZelDynamicConsoleListener::onInitialized(ZelEvent*) {
    ZelDebugOut("[zel] Application initialized\n");
}

void ZelDynamicConsoleListener::onExit(ZelEvent*) {
    ZelDebugOut("[zel] Application shutdown event recognized\n");
}

void ZelDynamicConsoleListener::onWindowStack(ZelEvent* event) {
    const auto* change = dynamic_cast<const ZelWindowStackChangedEvent*>(event);
    if (!change) return;
    ZelDebugOut(formatted("[zel] WinStack: %s %ld [%s]\n", change->IsAdded() ? "+=" : "-=",
                          change->GetNumber(), change->GetText().c_str())
                    .c_str());
}
