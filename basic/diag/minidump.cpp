#include <algorithm>
#include <atomic>
#include <chrono>
#include <mutex>
#include <string>
#include <string_view>

#include "diag/format.h"
#include "diag/winowner.h"
#include "zbasic/ztrace.h"

#include <windows.h>

#include <dbghelp.h>

namespace {

constexpr std::size_t kMaxNamePart = 40;  // keeps the path below the system's limit
constexpr std::string_view kForbidden = "<>:\"/\\|?*";
constexpr int kMaxAttempts = 1000;

// Where the threads and their stacks stand, without the program's data, in which secrets may lie.
constexpr auto kContent = static_cast<MINIDUMP_TYPE>(MiniDumpNormal | MiniDumpWithThreadInfo |
                                                     MiniDumpWithUnloadedModules);

constexpr std::chrono::seconds kMaxWait(60);

std::timed_mutex g_mutex;         // the debug-help library is made for one thread at a time
std::atomic<DWORD> g_writer = 0;  // the thread that has it; 0 is no thread's number
int g_count = 0;                  // of names tried in this process

// The right to write. A process that fails must not hang for it: neither on a thread that will
// never end, nor on itself, when writing fails and the handler of that wants a dump as well.
// (No thread-local flag: the run time takes memory for one, and the heap may be what is broken.)
class Turn {
public:
    Turn() : m_isOurs(g_writer != ::GetCurrentThreadId() && g_mutex.try_lock_for(kMaxWait)) {
        if (m_isOurs) g_writer = ::GetCurrentThreadId();
    }
    Turn(const Turn&) = delete;
    Turn& operator=(const Turn&) = delete;
    ~Turn() {
        if (!m_isOurs) return;
        g_writer = 0;
        g_mutex.unlock();
    }

    explicit operator bool() const { return m_isOurs; }

private:
    const bool m_isOurs;
};

std::string fileNameOf(std::string_view path) {
    return std::string(path.substr(path.find_last_of("\\/:") + 1));
}

// A piece of a file name: whatever that cannot hold becomes "-".
std::string namePart(std::string_view path) {
    std::string name = fileNameOf(path).substr(0, kMaxNamePart);
    const auto isForbidden = [](char c) {
        return static_cast<unsigned char>(c) < ' ' || kForbidden.find(c) != std::string_view::npos;
    };
    std::replace_if(name.begin(), name.end(), isForbidden, '-');
    return name;
}

std::string programName() {
    char path[MAX_PATH] = "";
    ::GetModuleFileNameA(nullptr, path, MAX_PATH - 1);
    const std::string name = fileNameOf(path);
    return namePart(name.substr(0, name.rfind('.')));
}

std::string temporaryDirectory() {
    char path[MAX_PATH + 1] = "";
    return {path, std::min<std::size_t>(::GetTempPathA(sizeof path, path), MAX_PATH)};
}

// The system's debug-help library, loaded only now: starting a program must not pay for it.
class DebugHelp {
public:
    DebugHelp() : m_module(::LoadLibraryExA("dbghelp.dll", nullptr, LOAD_LIBRARY_SEARCH_SYSTEM32)) {
        find("SymGetOptions", m_getOptions);
        find("SymSetOptions", m_setOptions);
        find("MiniDumpWriteDump", m_writeDump);
    }

    explicit operator bool() const { return m_getOptions && m_setOptions && m_writeDump; }

    bool writeDump(HANDLE file) const {
        // Nobody needs the modules' symbols here; reading them doubles the time under Wine.
        const DWORD options = m_getOptions();
        m_setOptions(options | SYMOPT_DEFERRED_LOADS);
        const BOOL isWritten = m_writeDump(::GetCurrentProcess(), ::GetCurrentProcessId(), file,
                                           kContent, nullptr, nullptr, nullptr);
        m_setOptions(options);
        return isWritten != FALSE;
    }

private:
    template <typename Function>
    void find(const char* name, Function*& function) {
        if (!m_module) return;
        void* const address = reinterpret_cast<void*>(::GetProcAddress(m_module.get(), name));
        function = reinterpret_cast<Function*>(address);
    }

    WinModule m_module;
    decltype(::SymGetOptions)* m_getOptions = nullptr;
    decltype(::SymSetOptions)* m_setOptions = nullptr;
    decltype(::MiniDumpWriteDump)* m_writeDump = nullptr;
};

struct DumpFile {
    std::string path;
    WinFile file;
};

DumpFile createDumpFile(const char* source, unsigned long line) {
    SYSTEMTIME now = {};
    ::GetLocalTime(&now);
    const std::string start = temporaryDirectory() + programName();
    const std::string sourceName = namePart(source ? source : "");
    DumpFile dump;
    for (int attempt = 0; attempt < kMaxAttempts; ++attempt) {
        dump.path = std::string(formatted("%s_%04d%02d%02d_%02d%02d%02d_%s_%lu_%lu_%d.dmp",
                                          start.c_str(), now.wYear, now.wMonth, now.wDay, now.wHour,
                                          now.wMinute, now.wSecond, sourceName.c_str(), line,
                                          ::GetCurrentProcessId(), ++g_count));
        dump.file.reset(::CreateFileA(dump.path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW,
                                      FILE_ATTRIBUTE_NORMAL, nullptr));
        // A file of an earlier process with our id is left alone.
        if (dump.file || ::GetLastError() != ERROR_FILE_EXISTS) break;
    }
    return dump;
}

}  // namespace

DumpEC Fct_CreateMiniDump(const char* file, unsigned long line) {
    const Turn turn;
    if (!turn) return kDumpNotWritten;
    const DebugHelp help;
    if (!help) return kDumpNoHelper;
    DumpFile dump = createDumpFile(file, line);
    if (!dump.file) return kDumpNoFile;
    if (help.writeDump(dump.file.get())) return kDumpWritten;
    dump.file.reset();
    ::DeleteFileA(dump.path.c_str());
    return kDumpNotWritten;
}
