// Tells how far work on a model is, and whether it is still wanted.

#pragma once

#include <functional>
#include <string>

#include "stopwatch.h"
#include "sv/string.h"

namespace zelhost {

class HostApplication;
class HostFrame;

// The program is busy as long as one of these lives: commands of the user are not carried out in
// the middle of it, wherever messages are handled.
class Work {
public:
    explicit Work(HostApplication& application);
    Work(const Work&) = delete;
    Work& operator=(const Work&) = delete;
    ~Work();

private:
    HostApplication& m_application;
};

// Once the work takes long it is told on standard error and in the frame's title.
//
// The operations say what goes on now. They handle the messages of windows, and answer false when
// the user wants the work to end.
class WorkProgress {
public:
    // `name` is that of the model; `frame` is null without windows.
    WorkProgress(HostApplication& application, HostFrame* frame, std::string name);
    WorkProgress(const WorkProgress&) = delete;
    WorkProgress& operator=(const WorkProgress&) = delete;
    ~WorkProgress();

    bool reading(double percent);
    bool drawing();
    bool writing(const std::string& file);

private:
    using Title = std::function<SV::String()>;  // asked for with windows only: others have no texts

    // At once, for what the user did before, and then now and then: messages and texts take time
    // themselves.
    bool isLookDue();
    bool goOn(const std::string& english, const Title& title);
    void show(const std::string& english, const Title& title);

    HostApplication& m_application;
    const Work m_work;
    HostFrame* const m_frame;
    const std::string m_name;
    const Clock::time_point m_start = Clock::now();
    Clock::time_point m_lastLook{};
    std::string m_shown;  // on standard error
};

}  // namespace zelhost
