#include "support/program_copy.h"

#include <filesystem>

#include <windows.h>

namespace fs = std::filesystem;

ProgramCopy::ProgramCopy() {
    char self[MAX_PATH] = "";
    ::GetModuleFileNameA(nullptr, self, MAX_PATH);
    m_program = fs::path(self).filename().string();
    add(m_program);
    for (const fs::directory_entry& entry : fs::directory_iterator(programFolder())) {
        if (entry.path().extension() == ".dll") add(entry.path().filename().string());
    }
}

void ProgramCopy::add(const std::string& name) const {
    const fs::path copy = m_folder.root() / name;
    fs::create_directories(copy.parent_path());
    fs::copy_file(fs::path(programFolder()) / name, copy);
}

ChildResult ProgramCopy::runChild(const std::string& name,
                                  const std::vector<std::string>& arguments) const {
    std::vector<std::string> all = {"--child", name};
    all.insert(all.end(), arguments.begin(), arguments.end());
    ChildOptions options;
    // Without a directory for them no minidumps are written, which take seconds each.
    const std::string nowhere = m_folder.path("nowhere");
    options.environment = {"TEMP=" + nowhere, "TMP=" + nowhere};
    return runProgram(m_folder.path(m_program), all, options);
}
