// The help file of the program.

#pragma once

#include "sv/export.h"
#include "sv/string.h"

namespace SV {

// Which help file a program has, and whether its help is on; off at first. A plain value.
class SV_API Help {
public:
    // What `Enable` is given by callers: help by keyboard and by menu.
    enum Mode : int { kOff = 0, kFullHelp = 3 };

    // Switches help on with that file (`kOff`: off).
    void Enable(int mode, const String& fileName) {
        m_mode = mode;
        m_fileName = fileName;
    }
    // As given to `Enable` last: 0 and empty before.
    int GetMode() const { return m_mode; }
    const String& GetFileName() const { return m_fileName; }

    // Opens the file in the system's viewer; false when help is off or that failed.
    bool Show() const;

private:
    int m_mode = kOff;
    String m_fileName;
};

}  // namespace SV
