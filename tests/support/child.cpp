#include "support/child.h"

#include <gtest/gtest.h>

#include <cstring>
#include <filesystem>
#include <map>

#include <windows.h>

namespace {

std::map<std::string, ChildEntry::Main>& entries() {
    static std::map<std::string, ChildEntry::Main> all;
    return all;
}

// By the rules that the run time splits a command line with.
std::string quoted(const std::string& argument) {
    if (!argument.empty() && argument.find_first_of(" \t\"") == std::string::npos) return argument;
    std::string text = "\"";
    std::size_t backslashes = 0;
    for (const char c : argument) {
        if (c == '\\') {
            ++backslashes;
            continue;
        }
        text.append(c == '"' ? 2 * backslashes + 1 : backslashes, '\\');
        backslashes = 0;
        text += c;
    }
    return text.append(2 * backslashes, '\\') + '"';
}

HANDLE outputFile(const std::string& path) {
    SECURITY_ATTRIBUTES inheritable = {sizeof inheritable, nullptr, TRUE};
    return ::CreateFileA(path.c_str(), GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE,
                         &inheritable, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
}

HANDLE inputFile(const std::string& path) {
    SECURITY_ATTRIBUTES inheritable = {sizeof inheritable, nullptr, TRUE};
    return ::CreateFileA(path.c_str(), GENERIC_READ, FILE_SHARE_READ, &inheritable, OPEN_EXISTING,
                         FILE_ATTRIBUTE_NORMAL, nullptr);
}

std::string withoutReturns(std::string text) {
    std::erase(text, '\r');
    return text;
}

std::string environmentBlock(const std::vector<std::string>& more) {
    std::string block;
    for (const std::string& entry : more) block.append(entry).push_back('\0');
    char* const own = ::GetEnvironmentStringsA();
    const char* end = own;
    while (*end) end += std::strlen(end) + 1;
    block.append(own, static_cast<std::size_t>(end - own)).push_back('\0');
    ::FreeEnvironmentStringsA(own);
    return block;
}

}  // namespace

ChildEntry::ChildEntry(const char* name, Main main) { entries()[name] = main; }

ChildEntry::Main ChildEntry::find(const std::string& name) {
    const auto entry = entries().find(name);
    return entry == entries().end() ? nullptr : entry->second;
}

std::string programFolder() {
    char path[MAX_PATH] = "";
    ::GetModuleFileNameA(nullptr, path, MAX_PATH);
    return std::filesystem::path(path).parent_path().string();
}

ChildResult runChild(const std::string& name, const std::vector<std::string>& arguments,
                     const ChildOptions& options) {
    char self[MAX_PATH] = "";
    ::GetModuleFileNameA(nullptr, self, MAX_PATH);
    std::vector<std::string> all = {"--child", name};
    all.insert(all.end(), arguments.begin(), arguments.end());
    return runProgram(self, all, options);
}

RunningProgram::RunningProgram(const std::string& program,
                               const std::vector<std::string>& arguments,
                               const ChildOptions& options)
    : m_program(program) {
    std::string commandLine = quoted(program);
    for (const std::string& argument : arguments) commandLine += " " + quoted(argument);
    STARTUPINFOA startup = {};
    startup.cb = sizeof startup;
    startup.dwFlags = STARTF_USESTDHANDLES;
    startup.hStdOutput = outputFile(m_files.path("out"));
    startup.hStdError = outputFile(m_files.path("err"));
    if (options.input) startup.hStdInput = inputFile(m_files.write("in", *options.input));
    std::string environment = environmentBlock(options.environment);
    PROCESS_INFORMATION process = {};
    const BOOL started = ::CreateProcessA(
        program.c_str(), commandLine.data(), nullptr, nullptr, TRUE, 0, environment.data(),
        options.directory.empty() ? nullptr : options.directory.c_str(), &startup, &process);
    EXPECT_TRUE(started) << commandLine << ": error " << ::GetLastError();
    ::CloseHandle(startup.hStdOutput);
    ::CloseHandle(startup.hStdError);
    if (startup.hStdInput) ::CloseHandle(startup.hStdInput);
    if (!started) return;
    ::CloseHandle(process.hThread);
    m_process = process.hProcess;
    m_id = process.dwProcessId;
}

RunningProgram::~RunningProgram() {
    if (m_process) wait();
}

bool RunningProgram::hasEnded() const {
    return !m_process || ::WaitForSingleObject(m_process, 0) == WAIT_OBJECT_0;
}

ChildResult RunningProgram::wait() {
    ChildResult result = {};
    if (m_process) {
        if (::WaitForSingleObject(m_process, 60'000) != WAIT_OBJECT_0) {
            ADD_FAILURE() << m_program << " does not end";
            ::TerminateProcess(m_process, 99);
            ::WaitForSingleObject(m_process, INFINITE);
        }
        ::GetExitCodeProcess(m_process, &result.exitCode);
        ::CloseHandle(m_process);
        m_process = nullptr;
    }
    result.out = withoutReturns(readFile(m_files.path("out")));
    result.err = withoutReturns(readFile(m_files.path("err")));
    return result;
}

ChildResult runProgram(const std::string& program, const std::vector<std::string>& arguments,
                       const ChildOptions& options) {
    return RunningProgram(program, arguments, options).wait();
}
