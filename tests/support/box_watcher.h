// Answers message boxes, so that a test can see what a user would.

#pragma once

#include <atomic>
#include <condition_variable>
#include <cstddef>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

struct SeenBox {
    std::string caption;
    std::string text;
    std::vector<std::string> buttons;  // from left to right
    bool hasErrorIcon = false;
};

// While it lives, every message box that a process opens is noted and then closed
// by pressing the button `answer` (IDOK, IDCANCEL, ...). Needs a display.
class BoxWatcher {
public:
    explicit BoxWatcher(int answer);  // for this process
    BoxWatcher(int answer, unsigned long processId);
    BoxWatcher(const BoxWatcher&) = delete;
    BoxWatcher& operator=(const BoxWatcher&) = delete;
    ~BoxWatcher();

    std::vector<SeenBox> seen() const;
    // Waits until there were so many. When that takes over half a minute the test fails and gets
    // what there is, filled up with empty ones.
    std::vector<SeenBox> waitFor(std::size_t count) const;

private:
    void watch();

    const int m_answer;
    const unsigned long m_processId;
    mutable std::mutex m_mutex;
    mutable std::condition_variable m_changed;  // `m_seen`
    std::vector<SeenBox> m_seen;
    std::atomic<bool> m_isDone = false;
    std::thread m_thread;
};
