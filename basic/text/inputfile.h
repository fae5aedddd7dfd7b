// What the file reader asks of the system.

#pragma once

#include <cstdint>
#include <optional>

// The "none" among the handles that `openInputFile` gives.
void* noInputFile();

// Opens an existing file for reading, shared with other readers. Child processes do not inherit it.
void* openInputFile(const char* name);
void closeInputFile(void* file);

std::optional<std::int64_t> inputFileSize(void* file);

// Up to `size` bytes from where the last one ended; 0 bytes at the end of the file.
std::optional<std::int32_t> readInputFile(void* file, char* buffer, std::int32_t size);

// From the start of the file; false when `offset` is negative.
bool seekInputFile(void* file, std::int64_t offset);

// Owner of such a file.
class InputFile {
public:
    explicit InputFile(const char* name) : m_file(openInputFile(name)) {}
    InputFile(const InputFile&) = delete;
    InputFile& operator=(const InputFile&) = delete;
    ~InputFile() {
        if (*this) closeInputFile(m_file);
    }

    explicit operator bool() const { return m_file != noInputFile(); }
    void* get() const { return m_file; }

private:
    void* const m_file;
};

// Ends the process at once with exit code 1 and tells the user why.
[[noreturn]] void stopProcess(const char* message);
