// Faults at the border to the system: what a module imports is exchanged for something else.

#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

// Puts `replacement` in the place of a function that a loaded module imports from another, for as
// long as it lives. The test fails when the module imports no such function.
class ImportPatch {
public:
    ImportPatch(const char* module, const char* function, const void* replacement);
    ImportPatch(const ImportPatch&) = delete;
    ImportPatch& operator=(const ImportPatch&) = delete;
    ~ImportPatch();

private:
    struct Place {
        void** slot;
        void* before;
    };
    std::vector<Place> m_places;
};

// Calls of one function by our libraries and the run time fail: they return `result` and leave
// `error` as the thread's last error. One of these lives at a time.
class FailingCall {
public:
    FailingCall(const std::string& function, unsigned long error, std::intptr_t result = 0);
    FailingCall(const FailingCall&) = delete;
    FailingCall& operator=(const FailingCall&) = delete;
    ~FailingCall();

    static int count();  // of the calls that failed since it was made; 0 without one

private:
    std::vector<std::unique_ptr<ImportPatch>> m_patches;
};

// What goes to a debugger meanwhile. One of these lives at a time.
class DebugOutput {
public:
    DebugOutput();
    static std::string text();

private:
    ImportPatch m_presence;
    ImportPatch m_output;
};
