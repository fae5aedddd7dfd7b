// A program without a console: its exit code says how its first window was to be shown.

#include <windows.h>

int WINAPI WinMain(HINSTANCE, HINSTANCE, LPSTR, int show) { return 40 + show; }
