// What the command line tells the diagnostics.

#pragma once

// Pushed in by `ZelCmdline` when it has parsed its flags: the diagnostics lie
// below it and must not ask it.
struct DiagSettings {
    bool dynamicConsole = false;     // debug output goes to standard error too
    bool releaseAssertions = false;  // boxes offer to break into the debugger
};

inline DiagSettings g_diagSettings;
