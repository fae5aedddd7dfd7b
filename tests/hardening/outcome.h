// What a fault led to, as a line of text for tables.

#pragma once

#include <string>

#include "support/import_patch.h"
#include "support/temp_dir.h"
#include "sv/application.h"

// The numbers of the internal errors that were reported, each behind a blank: " zfilelog-34".
std::string internalErrors(const std::string& debugOutput);

// A program without a user, in an empty current directory, with a place for temporary files that
// does not exist (so that no minidumps are written, which take seconds), seen by a debugger.
// While it lives, failures of the tool library are passed over and noted.
class FaultyPlace {
public:
    FaultyPlace();
    FaultyPlace(const FaultyPlace&) = delete;
    FaultyPlace& operator=(const FaultyPlace&) = delete;
    ~FaultyPlace();

    const TempDir& folder() const { return m_folder; }
    // What was reported since it was made: internal errors, then " exception 512/8" and such.
    std::string reports() const;

private:
    class Program : public SV::Application {
    public:
        bool Exception(long code, unsigned long detail) override;
        std::string exceptions;
    };

    TempDir m_folder;
    std::string m_before;  // the current directory
    std::string m_temp, m_tmp;
    DebugOutput m_debugOutput;
    Program m_program;
};
