// Dates and times by pictures.

#include <algorithm>
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

constexpr std::size_t kMostFieldSize = 12;  // of a number

// Writes the number that a run stands for; null when it stands for none.
char* writeField(char* out, const SV::Date& date, int field) {
    switch (field) {
        case run('D', 2):
            return writePadded(out, date.GetDay(), 2);
        case run('M', 2):
            return writePadded(out, date.GetMonth(), 2);
        case run('Y', 2):
            return writePadded(out, date.GetYear() % 100, 2);
        case run('Y', 4):
            return writePadded(out, date.GetYear(), 0);
        default:
            return nullptr;
    }
}

char* writeField(char* out, const SV::Time& time, int field) {
    switch (field) {
        case run('H', 2):
            return writePadded(out, time.GetHour(), 2);
        case run('M', 2):
            return writePadded(out, time.GetMin(), 2);
        case run('S', 2):
            return writePadded(out, time.GetSec(), 2);
        default:
            return nullptr;
    }
}

// The name that a run stands for; null when it stands for none.
const SV::String* nameOf(const SV::Date& date, int field) {
    if (field == run('D', 3)) return &weekdayName(date.GetDayOfWeek());
    return field == run('M', 3) ? &monthName(date.GetMonth() - 1) : nullptr;
}

const SV::String* nameOf(const SV::Time&, int) { return nullptr; }

// Short texts are put together here and made in one go. The place to write at is a variable of
// its own: as the member of an object it would be stored with each character.
template <class Moment>
SV::String byPicture(const Moment& moment, const SV::String& format) {
    SV::String text;
    char buffer[128];
    std::fill_n(buffer, SV::String::kInlineCapacity, '\0');  // all of which is copied at the end
    char* out = buffer;
    const auto flush = [&] {
        text.append(buffer, static_cast<std::size_t>(out - buffer));
        out = buffer;
    };
    const auto makeRoom = [&](std::size_t size) {
        if (static_cast<std::size_t>(buffer + sizeof buffer - out) < size) flush();
    };
    const char* const last = format.end();
    for (const char* start = format.begin(); start != last;) {
        const char letter = upper(*start);
        makeRoom(kMostFieldSize);
        if (!isPictureLetter(moment, letter)) {
            *out++ = letter;
            ++start;
            continue;
        }
        const char* const begin = start;
        while (start != last && upper(*start) == letter) ++start;
        const auto length = static_cast<std::size_t>(start - begin);
        if (char* const end = writeField(out, moment, run(letter, length))) {
            out = end;
        } else if (const SV::String* const name = nameOf(moment, run(letter, length))) {
            makeRoom(name->size());
            if (name->size() > sizeof buffer) {
                text += *name;
            } else {
                out = std::ranges::copy(*name, out).out;
            }
        } else {
            flush();
            text.append(length, letter);
        }
    }
    if (!text.empty()) {
        flush();
        return text;
    }
    return text.assignPadded(buffer, static_cast<std::size_t>(out - buffer));
}

}  // namespace

SV::String ZelDate::GetFormatedDate(const SV::Date& date, const SV::String& format) {
    return format.empty() ? localeDate(date) : byPicture(date, format);
}

SV::String ZelDate::GetFormatedTime(const SV::Time& time, const SV::String& format) {
    return format.empty() ? localeTime(time) : byPicture(time, format);
}
