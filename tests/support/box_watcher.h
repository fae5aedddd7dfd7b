// Answers message boxes of this process, so that a test can see what a user would.

#pragma once

#include <atomic>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

struct SeenBox {
    std::string caption;
    std::string text;
    std::vector<std::string> buttons;  // from left to right
};

// While it lives, every message box that this process opens is noted and then
// closed by pressing the button `answer` (IDOK, IDCANCEL, ...). Needs a display.
class BoxWatcher {
public:
    explicit BoxWatcher(int answer);
    BoxWatcher(const BoxWatcher&) = delete;
    BoxWatcher& operator=(const BoxWatcher&) = delete;
    ~BoxWatcher();

    std::vector<SeenBox> seen() const;

private:
    void watch();

    const int m_answer;
    mutable std::mutex m_mutex;
    std::vector<SeenBox> m_seen;
    std::atomic<bool> m_isDone = false;
    std::thread m_thread;
};
