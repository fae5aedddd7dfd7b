// A DLL in the place of another one. Whoever loads it leaves its path in the file that the
// environment variable TEST_PLANTED names.

#include <windows.h>

extern "C" BOOL WINAPI DllMain(HINSTANCE self, DWORD reason, LPVOID) {
    char mark[MAX_PATH] = "";
    if (reason != DLL_PROCESS_ATTACH || !::GetEnvironmentVariableA("TEST_PLANTED", mark, MAX_PATH))
        return TRUE;
    char line[MAX_PATH + 1] = "";
    const DWORD size = ::GetModuleFileNameA(self, line, MAX_PATH);
    line[size] = '\n';
    const HANDLE file = ::CreateFileA(mark, FILE_APPEND_DATA, FILE_SHARE_READ | FILE_SHARE_WRITE,
                                      nullptr, OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
    DWORD written = 0;
    ::WriteFile(file, line, size + 1, &written, nullptr);
    ::CloseHandle(file);
    return TRUE;
}
