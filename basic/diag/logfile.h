// How log files are opened and written.

#pragma once

#include <cstdio>
#include <string_view>

enum class LogFileMode { kRead, kAppend, kEmpty };

// Null when the system refuses. Other programs may read and write the file, but no child process
// inherits it: one that still runs would make the next rename fail.
std::FILE* openLogFile(const char* path, LogFileMode mode);

// Writes as to a stream in text mode: every "\n" becomes "\r\n". The streams themselves are in
// binary mode, as the run time's own translation costs more than all else of a short entry.
bool writeLogText(std::FILE* file, std::string_view text);

// Hands the bytes as they are to the system, for a stream without a buffer: half the way that they
// take through the run time. Its error indicator is kept as by a write of its own.
void writeLogBytes(std::FILE* file, std::string_view bytes);
