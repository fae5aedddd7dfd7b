// The local time, for those who ask very often.

#pragma once

#include <cstdint>
#include <string_view>

#include "sv/datetime.h"

// Turns the system's clock into local time once a second; within a second only the milliseconds
// change. A clock that is set, forward or back, is followed at once.
class LogClock {
public:
    void update();  // to now

    const SV::Date& date() const { return m_date; }
    // As stamps have them: "2024.03.05" and "14:07:09".
    std::string_view dateText() const { return {m_dateText, kDateSize}; }
    std::string_view timeText() const { return {m_timeText, kTimeSize}; }
    unsigned millisecond() const { return m_millisecond; }

private:
    static constexpr std::size_t kDateSize = 10;
    static constexpr std::size_t kTimeSize = 8;

    void toLocal(std::uint64_t ticks);

    std::uint64_t m_second = 0;  // of the system's clock; no clock shows its first one
    unsigned m_millisecond = 0;
    SV::Date m_date;
    char m_dateText[24] = "";
    char m_timeText[24] = "";
};
