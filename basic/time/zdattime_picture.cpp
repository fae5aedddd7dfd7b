// Dates and times by pictures.

#include <charconv>

#include "time/digits.h"
#include "time/localeforms.h"
#include "zbasic/zdattime.h"

namespace {

// By ASCII: the code page's other letters stay as they are.
constexpr char upper(char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; }

void appendTwoDigits(SV::String& text, int number) {
    char digits[16];
    text.append(digits, static_cast<std::size_t>(writePadded(digits, number, 2) - digits));
}

void appendNumber(SV::String& text, int number) {
    char digits[16];
    const char* const end = std::to_chars(digits, digits + sizeof digits, number).ptr;
    text.append(digits, static_cast<std::size_t>(end - digits));
}

// Appends what a run of `length` upper-case letters stands for; false when it stands for itself.
bool appendField(SV::String& text, const SV::Date& date, char letter, std::size_t length) {
    if (letter == 'D' && length == 2) {
        appendTwoDigits(text, date.GetDay());
    } else if (letter == 'D' && length == 3) {
        text += ZelDate::WeekdayToStr(date.GetDayOfWeek());
    } else if (letter == 'M' && length == 2) {
        appendTwoDigits(text, date.GetMonth());
    } else if (letter == 'M' && length == 3) {
        text += ZelDate::MonthToStr(date.GetMonth() - 1);
    } else if (letter == 'Y' && length == 2) {
        appendTwoDigits(text, date.GetYear() % 100);
    } else if (letter == 'Y' && length == 4) {
        appendNumber(text, date.GetYear());
    } else {
        return false;
    }
    return true;
}

bool appendField(SV::String& text, const SV::Time& time, char letter, std::size_t length) {
    if (length != 2) return false;
    if (letter == 'H') {
        appendTwoDigits(text, time.GetHour());
    } else if (letter == 'M') {
        appendTwoDigits(text, time.GetMin());
    } else if (letter == 'S') {
        appendTwoDigits(text, time.GetSec());
    } else {
        return false;
    }
    return true;
}

template <class Moment>
SV::String byPicture(const Moment& moment, const SV::String& format) {
    SV::String text;
    text.reserve(format.size());
    const char* const last = format.end();
    for (const char* start = format.begin(); start != last;) {
        const char letter = upper(*start);
        const char* end = start + 1;
        while (end != last && upper(*end) == letter) ++end;
        const auto length = static_cast<std::size_t>(end - start);
        if (!appendField(text, moment, letter, length)) text.append(length, letter);
        start = end;
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
