// Dates and times by pictures.

#include <array>
#include <cstddef>

#include "time/digits.h"
#include "time/localeforms.h"
#include "time/names.h"
#include "zbasic/zdattime.h"

namespace {

// By ASCII: the code page's other letters stay as they are.
constexpr char upper(char c) {
    return static_cast<unsigned char>(c - 'a') < 26 ? static_cast<char>(c - 'a' + 'A') : c;
}

constexpr bool isPictureLetter(const SV::Date&, char c) { return c == 'D' || c == 'M' || c == 'Y'; }
constexpr bool isPictureLetter(const SV::Time&, char c) { return c == 'H' || c == 'M' || c == 'S'; }

// What a letter stands for in a run of that length.
constexpr int run(char letter, std::size_t length) {
    return length < 5 ? letter << 4 | static_cast<int>(length) : 0;
}

// All pairs of digits, one behind the other.
constexpr auto kPairs = [] {
    std::array<char, 200> pairs{};
    for (std::size_t i = 0; i < 100; ++i) {
        pairs[2 * i] = static_cast<char>('0' + i / 10);
        pairs[2 * i + 1] = static_cast<char>('0' + i % 10);
    }
    return pairs;
}();

// Copied from where they are: what has just been written byte by byte is slow to be copied.
void appendPair(SV::String& text, int number) {
    text.append(kPairs.data() + 2 * static_cast<std::size_t>(number), 2);
}

void appendNumber(SV::String& text, int number, std::ptrdiff_t width) {
    if (number >= 0 && number < 100 && width == 2) {
        appendPair(text, number);
    } else if (number >= 1000 && number < 10000) {
        appendPair(text, number / 100);
        appendPair(text, number % 100);
    } else {
        char digits[12];
        text.append(digits, static_cast<std::size_t>(writePadded(digits, number, width) - digits));
    }
}

// Appends what a run stands for; false when it stands for itself.
bool appendField(SV::String& text, const SV::Date& date, int field) {
    switch (field) {
        case run('D', 2):
            appendNumber(text, date.GetDay(), 2);
            return true;
        case run('D', 3):
            text += weekdayName(date.GetDayOfWeek());
            return true;
        case run('M', 2):
            appendNumber(text, date.GetMonth(), 2);
            return true;
        case run('M', 3):
            text += monthName(date.GetMonth() - 1);
            return true;
        case run('Y', 2):
            appendNumber(text, date.GetYear() % 100, 2);
            return true;
        case run('Y', 4):
            appendNumber(text, date.GetYear(), 0);
            return true;
        default:
            return false;
    }
}

bool appendField(SV::String& text, const SV::Time& time, int field) {
    switch (field) {
        case run('H', 2):
            appendNumber(text, time.GetHour(), 2);
            return true;
        case run('M', 2):
            appendNumber(text, time.GetMin(), 2);
            return true;
        case run('S', 2):
            appendNumber(text, time.GetSec(), 2);
            return true;
        default:
            return false;
    }
}

template <class Moment>
SV::String byPicture(const Moment& moment, const SV::String& format) {
    SV::String text;
    text.reserve(format.size());
    const char* const last = format.end();
    for (const char* start = format.begin(); start != last;) {
        const char letter = upper(*start);
        if (!isPictureLetter(moment, letter)) {
            text += letter;
            ++start;
            continue;
        }
        const char* const begin = start;
        while (start != last && upper(*start) == letter) ++start;
        const auto length = static_cast<std::size_t>(start - begin);
        if (!appendField(text, moment, run(letter, length))) text.append(length, letter);
    }
    return text;
}

}  // namespace

SV::String ZelDate::GetFormatedDate(const SV::Date& date, const SV::String& format) {
    return format.empty() ? localeDate(date) : byPicture(date, format);
}

SV::String ZelDate::GetFormatedTime(const SV::Time& time, const SV::String& format) {
    return format.empty() ? localeTime(time) : byPicture(time, format);
}
