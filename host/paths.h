// File names, and files that are there whole or not at all.

#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "model/message.h"
#include "model/text_output.h"

namespace zelhost {

// All names are in the process code page.
std::string absolutePath(const std::string& path);
std::string fileNameOf(const std::string& path);   // behind the last separator
std::string baseNameOf(const std::string& path);   // the file name without its extension
std::string directoryOf(const std::string& path);  // without the separator; of a full path

// The extension of a model's file, without the dot.
std::string modelExtension();
// The path with that extension, unless it has it or there is a file of this very name.
std::string withExtension(const std::string& path);

// What the system says to an error, in that language where it has it.
std::string systemMessage(std::uint32_t error, std::uint16_t language);

// `english` with these details and, for its last "%s", what the system says to the error.
Message systemProblem(const char* english, std::vector<std::string> details, std::uint32_t error);

// Makes the directory and those above it; false with the system's reason in `problem`.
bool makeDirectory(const std::string& path, Message& problem);

// A name for a file that is not complete. Whatever is made of it is deleted by the destructor, or
// else when the program exits; what a killed program leaves, `removeLeftovers` finds. Main thread.
class TemporaryName {
public:
    explicit TemporaryName(const std::string& directory);
    TemporaryName(const TemporaryName&) = delete;
    TemporaryName& operator=(const TemporaryName&) = delete;
    ~TemporaryName();

    const std::string& path() const { return m_path; }
    // Gives the file its real name, which replaces what had it; else false with the last error set.
    bool moveTo(const std::string& path) const;

private:
    std::string m_path;
};

// Deletes the files of temporary names in the directory that nobody has written to for a day.
void removeLeftovers(const std::string& directory);

// A file that takes its place when it is complete: until then, and for good when something goes
// wrong, what lay at the place stays as it was. Writes to a temporary name beside it.
class PendingFile {
public:
    explicit PendingFile(std::string path);
    PendingFile(const PendingFile&) = delete;
    PendingFile& operator=(const PendingFile&) = delete;
    ~PendingFile();

    bool write(std::string_view bytes);
    WriteChunk writer() {
        return [this](std::string_view bytes) { return write(bytes); };
    }

    // All is written: false when any of it has failed.
    bool complete();
    // Completes it and moves it into place; false when that or anything before has failed.
    bool commit();
    const std::string& path() const { return m_path; }
    // Why it could not be written, once something has failed.
    const Message& problem() const { return m_problem; }

private:
    bool fail();
    void close();

    const std::string m_path;
    const TemporaryName m_temporary;
    void* m_handle;
    Message m_problem;
};

}  // namespace zelhost
