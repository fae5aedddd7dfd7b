// The day that a log file belongs to, as its first line says.

#pragma once

#include <optional>
#include <string_view>

#include "sv/datetime.h"

// Reads the start of a file as `scanf("%d.%d.%d")` does (year, month, day; white space before each
// number), block by block, so that no file has to be held in memory.
class LogDateScan {
public:
    // False: what follows does not matter any more.
    bool take(std::string_view block);

    // Nothing when the file does not begin with three numbers, or when they are no day in the
    // layout of a stamp: months and days have two digits. The year is taken modulo 10000.
    // Relied on by callers: the calendar is not asked, month 13 is one.
    std::optional<SV::Date> date() const;

private:
    bool takeByte(char c);

    enum class State { kSpace, kSign, kDigits, kDone };

    struct Number {
        int value = 0;
        bool isNegative = false;
        bool hasDigits = false;
    };
    Number m_numbers[3];
    int m_field = 0;
    State m_state = State::kSpace;
};
