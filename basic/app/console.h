// The dynamic console: a console window that a program without one opens on request.

#pragma once

// Opens it, attaches the standard streams, and puts it away at process exit. Ends the
// process when the system has no console for it.
void openDynamicConsole();
