/* Compiled for 32 bits: right but for that. */
__declspec(dllexport) int ZelPluginFctGetVersion(void) { return 108230922; }
__declspec(dllexport) int ZelPluginFctGetType(void) { return 101; }
