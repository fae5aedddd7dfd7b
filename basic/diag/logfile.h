// How log files are opened.

#pragma once

#include <cstdio>

enum class LogFileMode { kRead, kAppend, kEmpty };

// In text mode; null when the system refuses. Other programs may read and write the file, but no
// child process inherits it: one that still runs would make the next rename fail.
std::FILE* openLogFile(const char* path, LogFileMode mode);
