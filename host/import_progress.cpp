#include "import_progress.h"

#include <cstdio>

#include "hostapp.h"
#include "hostframe.h"

namespace zelhost {

ImportProgress::ImportProgress(HostApplication& application, HostFrame* frame, std::string name)
    : m_application(application), m_frame(frame), m_name(std::move(name)) {}

ImportProgress::~ImportProgress() {
    if (m_lastPercent < 0) return;
    std::fputc('\n', stderr);
    if (m_frame) m_frame->updateTitle();
}

bool ImportProgress::operator()(double percent) {
    constexpr double kPatience = 0.5;  // seconds
    const int whole = static_cast<int>(percent);
    if (whole == m_lastPercent || secondsSince(m_start) < kPatience) return true;
    m_lastPercent = whole;
    std::fprintf(stderr, "\r%s: %d %%", m_name.c_str(), whole);
    std::fflush(stderr);
    if (m_frame) m_frame->showProgress(m_name, whole);
    m_application.Reschedule();
    return !m_frame || m_frame->GetHandle();  // a closed frame ends the import
}

}  // namespace zelhost
