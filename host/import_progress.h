// Tells how far an import is.

#pragma once

#include <string>

#include "stopwatch.h"

namespace zelhost {

class HostApplication;
class HostFrame;

// Once the import takes long: on standard error and in the frame's title.
class ImportProgress {
public:
    // `frame` is null without windows.
    ImportProgress(HostApplication& application, HostFrame* frame, std::string name);
    ImportProgress(const ImportProgress&) = delete;
    ImportProgress& operator=(const ImportProgress&) = delete;
    ~ImportProgress();

    bool operator()(double percent);  // false when the import is to end

private:
    HostApplication& m_application;
    HostFrame* const m_frame;
    const std::string m_name;
    const Clock::time_point m_start = Clock::now();
    int m_lastPercent = -1;
};

}  // namespace zelhost
