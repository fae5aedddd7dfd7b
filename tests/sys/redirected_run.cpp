#include "sys/redirected_run.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>

#include "support/temp_dir.h"

#include <windows.h>

std::string programPath() {
    char path[MAX_PATH] = "";
    ::GetModuleFileNameA(nullptr, path, MAX_PATH);
    return path;
}

bool startProgram(ZelSynchronousProcess& process, bool showConsoleWindow) {
    return process.Execute(showConsoleWindow) ||
           (::GetLastError() == ERROR_INTERNAL_ERROR && process.Execute(showConsoleWindow));
}

long waitFor(ZelSynchronousProcess& process) {
    long code = -1;
    for (int polls = 0; polls < 30 && code == -1; ++polls) code = process.Wait();
    return code;
}

std::string textOf(const std::string& path) {
    std::string text = readFile(path);
    std::erase(text, '\r');
    return text;
}

std::string outputOf(const std::string& arguments) {
    const TempDir dir;
    ZelSynchronousProcess process(SV::String("\"" + programPath() + "\" " + arguments),
                                  SV::String("1>\"" + dir.path("out") + "\""), kCmdHide);
    process.SetUseRedirection(true);
    EXPECT_TRUE(startProgram(process));
    EXPECT_NE(waitFor(process), -1);
    return textOf(dir.path("out"));
}

CurrentDirectory::CurrentDirectory(const std::string& path)
    : m_old(std::filesystem::current_path().string()) {
    std::filesystem::current_path(path);
}

CurrentDirectory::~CurrentDirectory() { std::filesystem::current_path(m_old); }
