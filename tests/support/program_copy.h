// A program folder of a test's own.

#pragma once

#include <string>
#include <vector>

#include "support/child.h"
#include "support/temp_dir.h"

// Holds a copy of this test program and of its DLLs, without language folders
// and language list: for what is looked up beside the program.
class ProgramCopy {
public:
    ProgramCopy();

    const TempDir& folder() const { return m_folder; }
    // Copies a file of the real program folder to the same place in this one.
    void add(const std::string& name) const;

    // Like the free `runChild`. The child has no directory for temporary files.
    ChildResult runChild(const std::string& name, const std::vector<std::string>& arguments) const;

private:
    TempDir m_folder;
    std::string m_program;
};
