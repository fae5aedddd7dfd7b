// Echo of events on the dynamic console.

#pragma once

#include "zbasic/zevent.h"

// Writes a line for what happens to the application while it lives. Made by the
// start-up, only for programs with the option "console".
class ZelDynamicConsoleListener : public ZelEventListener {
public:
    ZelDynamicConsoleListener();
    ~ZelDynamicConsoleListener() override;

private:
    void onStartupPhase(ZelEvent* event);
    void onInitialized(ZelEvent* event);
    void onExit(ZelEvent* event);
    void onWindowStack(ZelEvent* event);
};
