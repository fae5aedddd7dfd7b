// Dates and times by pictures.

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstring>
#include <string_view>

#include "time/digits.h"
#include "time/localeforms.h"
#include "time/names.h"
#include "zbasic/zdattime.h"

namespace {

// By ASCII: the code page's other letters stay as they are.
constexpr char upper(char c) {
    return static_cast<unsigned char>(c - 'a') < 26 ? static_cast<char>(c - 'a' + 'A') : c;
}

// The capital of a letter; what is no letter does not become one.
constexpr char capital(char c) { return static_cast<char>(c & ~('a' ^ 'A')); }

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

char* writePair(char* out, int number) {
    std::memcpy(out, kPairs.data() + 2 * static_cast<std::size_t>(number), 2);
    return out + 2;
}

char* writeTwo(char* out, int number) {
    return number >= 0 && number < 100 ? writePair(out, number) : writePadded(out, number, 2);
}

char* writeYear(char* out, int year) {
    if (year < 1000 || year >= 10000) return writePadded(out, year, 0);
    return writePair(writePair(out, year / 100), year % 100);
}

// A place in a text that is made, and where its room ends.
struct Room {
    char* out;
    const char* end;

    bool has(std::size_t size) const { return size <= static_cast<std::size_t>(end - out); }
    bool add(const char* text, std::size_t size) {
        if (!has(size)) return false;
        std::memcpy(out, text, size);
        out += size;
        return true;
    }
    bool add(const SV::String& name) { return add(name.data(), name.size()); }
    bool add(std::size_t count, char c) {
        if (!has(count)) return false;
        out = std::fill_n(out, count, c);
        return true;
    }
    template <class Write>
    bool addNumber(Write write, int number) {
        if (!has(kMaxNumber)) return false;
        out = write(out, number);
        return true;
    }

private:
    static constexpr std::size_t kMaxNumber = 11;
};

// Writes what a run stands for: `length` times that letter. False when there is no room for it.
bool writeRun(Room& room, const SV::Date& date, char letter, std::size_t length) {
    switch (run(letter, length)) {
        case run('D', 2):
            return room.addNumber(writeTwo, date.GetDay());
        case run('D', 3):
            return room.add(weekdayName(date.GetDayOfWeek()));
        case run('M', 2):
            return room.addNumber(writeTwo, date.GetMonth());
        case run('M', 3):
            return room.add(monthName(date.GetMonth() - 1));
        case run('Y', 2):
            return room.addNumber(writeTwo, date.GetYear() % 100);
        case run('Y', 4):
            return room.addNumber(writeYear, date.GetYear());
        default:
            return room.add(length, letter);
    }
}

bool writeRun(Room& room, const SV::Time& time, char letter, std::size_t length) {
    switch (run(letter, length)) {
        case run('H', 2):
            return room.addNumber(writeTwo, time.GetHour());
        case run('M', 2):
            return room.addNumber(writeTwo, time.GetMin());
        case run('S', 2):
            return room.addNumber(writeTwo, time.GetSec());
        default:
            return room.add(length, letter);
    }
}

// Writes what the beginning of `picture` stands for, as far as there is room, and cuts that off.
template <class Moment>
char* writeBeginning(Room room, const Moment& moment, std::string_view& picture) {
    const char* start = picture.data();
    const char* const last = start + picture.size();
    while (start != last) {
        const char letter = capital(*start);
        if (!isPictureLetter(moment, letter)) {
            if (!room.has(1)) break;
            *room.out++ = upper(*start++);
            continue;
        }
        const char* end = start + 1;
        while (end != last && capital(*end) == letter) ++end;
        if (!writeRun(room, moment, letter, static_cast<std::size_t>(end - start))) break;
        start = end;
    }
    picture.remove_prefix(static_cast<std::size_t>(start - picture.data()));
    return room.out;
}

template <class Moment>
SV::String byPicture(const Moment& moment, const SV::String& format) {
    // The usual picture needs one step: of numbers alone in the text object itself.
    constexpr std::size_t kNumbers = 10;
    constexpr std::size_t kNames = 40;
    SV::String text;
    std::string_view picture = format;
    std::size_t room =
        format.size() <= kNumbers ? SV::String::kInlineCapacity : format.size() + kNames;
    for (; !picture.empty(); room *= 2) {
        const std::size_t size = text.size();
        text.resizeAndOverwrite(room, [&](char* out, std::size_t capacity) {
            const Room place{out + size, out + capacity};
            return static_cast<std::size_t>(writeBeginning(place, moment, picture) - out);
        });
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
