#include "work_progress.h"

#include <algorithm>
#include <cstdio>

#include "hostapp.h"
#include "hostframe.h"
#include "texts.h"

namespace zelhost {

namespace {

constexpr std::chrono::milliseconds kPatience(500);
constexpr std::chrono::milliseconds kBetweenLooks(50);

}  // namespace

Work::Work(HostApplication& application) : m_application(application) { m_application.beginWork(); }

Work::~Work() { m_application.endWork(); }

WorkProgress::WorkProgress(HostApplication& application, HostFrame* frame, std::string name)
    : m_application(application), m_work(application), m_frame(frame), m_name(std::move(name)) {}

WorkProgress::~WorkProgress() {
    if (m_shown.empty()) return;
    std::fputc('\n', stderr);
    if (m_frame) m_frame->updateTitle();
}

bool WorkProgress::reading(double percent) {
    if (!isLookDue()) return m_application.isWorkWanted();
    const std::string whole = std::to_string(static_cast<int>(percent)) + " %";
    return goOn(whole, [&] { return filled(filled(Text::kReading, m_name), whole); });
}

bool WorkProgress::drawing() {
    if (!isLookDue()) return m_application.isWorkWanted();
    return goOn("drawing", [&] { return filled(Text::kDrawing, m_name); });
}

bool WorkProgress::writing(const std::string& file) {
    if (!isLookDue()) return m_application.isWorkWanted();
    return goOn("writing " + file, [&] { return filled(Text::kWriting, file); });
}

bool WorkProgress::isLookDue() {
    const Clock::time_point now = Clock::now();
    if (now - m_lastLook < kBetweenLooks) return false;
    m_lastLook = now;
    return true;
}

bool WorkProgress::goOn(const std::string& english, const Title& title) {
    if (m_lastLook - m_start >= kPatience && english != m_shown) show(english, title);
    if (m_frame) m_application.Reschedule();
    return m_application.isWorkWanted();
}

void WorkProgress::show(const std::string& english, const Title& title) {
    const std::size_t length = std::max(english.size(), m_shown.size());  // covers the last one
    std::fprintf(stderr, "\r%s: %-*s", m_name.c_str(), static_cast<int>(length), english.c_str());
    std::fflush(stderr);
    m_shown = english;
    if (m_frame) m_frame->showProgress(title());
}

}  // namespace zelhost
