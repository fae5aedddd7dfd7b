// Work beside that of the main thread.

#pragma once

#include <chrono>
#include <future>
#include <stop_token>

namespace zelhost {

// Runs on a thread of its own; the destructor asks it to stop and waits for its end.
template <typename Result>
class SideTask {
public:
    // `work` is called with a `std::stop_token`, which it should look at now and then.
    template <typename Work>
    explicit SideTask(Work work)
        : m_result(std::async(std::launch::async, std::move(work), m_stop.get_token())) {}
    SideTask(const SideTask&) = delete;
    SideTask& operator=(const SideTask&) = delete;
    ~SideTask() { stop(); }

    void stop() { m_stop.request_stop(); }

    // Until it is done; `goOn` is called many times a second meanwhile. False when that says so.
    template <typename GoOn>
    bool wait(GoOn goOn) const {
        while (!isDone(std::chrono::milliseconds(20))) {
            if (!goOn()) return false;
        }
        return true;
    }

    // Whether it is done, or gets done in that time.
    bool isDone(std::chrono::milliseconds patience = {}) const {
        return m_result.wait_for(patience) == std::future_status::ready;
    }

    // Once.
    Result take() { return m_result.get(); }

private:
    std::stop_source m_stop;
    std::future<Result> m_result;  // its destructor waits for the thread
};

}  // namespace zelhost
