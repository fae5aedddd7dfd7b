// What the file reader asks of the system.

#pragma once

#include <cstdint>
#include <optional>

// The "none" among the handles that `openInputFile` gives.
void* noInputFile();

// Opens an existing file for reading, shared with other readers.
void* openInputFile(const char* name);
void closeInputFile(void* file);

std::optional<std::int64_t> inputFileSize(void* file);

// Up to `size` bytes from where the last one ended; 0 bytes at the end of the file.
std::optional<std::int32_t> readInputFile(void* file, char* buffer, std::int32_t size);

// From the start of the file; false when `offset` is negative.
bool seekInputFile(void* file, std::int64_t offset);

// Ends the process at once with exit code 1 and tells the user why.
[[noreturn]] void stopProcess(const char* message);
