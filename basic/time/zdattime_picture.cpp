// Dates and times by pictures.

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <cstring>
#include <string_view>

#include "text/bytescan.h"
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

bool hasFourDigits(int year) { return year >= 1000 && year < 10000; }

char* writeFour(char* out, int number) {
    return writePair(writePair(out, number / 100), number % 100);
}

char* writeYear(char* out, int year) {
    return hasFourDigits(year) ? writeFour(out, year) : writePadded(out, year, 0);
}

// What a run of two of that letter stands for.
int numberOfTwo(const SV::Date& date, char letter) {
    return letter == 'D' ? date.GetDay() : letter == 'M' ? date.GetMonth() : date.GetYear() % 100;
}
int numberOfTwo(const SV::Time& time, char letter) {
    return letter == 'H' ? time.GetHour() : letter == 'M' ? time.GetMin() : time.GetSec();
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
    // Mostly by a copy whose length is known beforehand: names differ in theirs.
    bool add(const SV::String& name) {
        constexpr std::size_t kUsual = SV::String::kInlineCapacity;
        if (!has(kUsual) || name.size() > kUsual || name.capacity() < kUsual) {
            return add(name.data(), name.size());
        }
        std::memcpy(out, name.data(), kUsual);
        out += name.size();
        return true;
    }
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
    if (length == 2) return room.addNumber(writeTwo, numberOfTwo(date, letter));
    switch (run(letter, length)) {
        case run('D', 3):
            return room.add(weekdayName(date.GetDayOfWeek()));
        case run('M', 3):
            return room.add(monthName(date.GetMonth() - 1));
        case run('Y', 4):
            return room.addNumber(writeYear, date.GetYear());
        default:
            return room.add(length, letter);
    }
}

bool writeRun(Room& room, const SV::Time& time, char letter, std::size_t length) {
    if (length == 2) return room.addNumber(writeTwo, numberOfTwo(time, letter));
    return room.add(length, letter);
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

// Writes over a run what it stands for; false when that is not as long.
template <class Moment>
bool overwriteTwo(char* at, const Moment& moment, char letter) {
    const int number = numberOfTwo(moment, letter);
    if (number < 0 || number >= 100) return false;
    writePair(at, number);
    return true;
}

template <char kLetter>
bool overwriteRun(char* at, const SV::Date& date, int length) {
    if (length == 4 && kLetter == 'Y') {
        const int year = date.GetYear();
        if (!hasFourDigits(year)) return false;
        writeFour(at, year);
    }
    if (length == 3) return kLetter == 'Y';
    return length != 2 || overwriteTwo(at, date, kLetter);
}

template <char kLetter>
bool overwriteRun(char* at, const SV::Time& time, int length) {
    return length != 2 || overwriteTwo(at, time, kLetter);
}

// The same for all runs of a letter; `capitals` are the picture's characters.
template <char kLetter, class Moment>
bool overwriteRuns(char* out, const Moment& moment, __m128i capitals) {
    auto places = static_cast<unsigned>(_mm_movemask_epi8(isByte(capitals, kLetter)));
    while (places != 0) {
        const int start = std::countr_zero(places);
        const int length = std::countr_one(places >> start);
        if (!overwriteRun<kLetter>(out + start, moment, length)) return false;
        places &= ~0U << (start + length);
    }
    return true;
}

bool overwriteRuns(char* out, const SV::Date& date, __m128i capitals) {
    return overwriteRuns<'D'>(out, date, capitals) && overwriteRuns<'M'>(out, date, capitals) &&
           overwriteRuns<'Y'>(out, date, capitals);
}

bool overwriteRuns(char* out, const SV::Time& time, __m128i capitals) {
    return overwriteRuns<'H'>(out, time, capitals) && overwriteRuns<'M'>(out, time, capitals) &&
           overwriteRuns<'S'>(out, time, capitals);
}

// The usual picture is short and of numbers that are as long as their runs: what runs are in it
// shows at a glance, and its other characters are where they belong.
template <class Moment>
bool writeNumbers(char* out, const Moment& moment, std::string_view picture) {
    const __m128i characters = loadShort(picture.data(), picture.size());
    const __m128i caseBit = _mm_set1_epi8('a' ^ 'A');
    const __m128i small = _mm_and_si128(isInRange(characters, 'a', 'z'), caseBit);
    _mm_storeu_si128(reinterpret_cast<__m128i*>(out), _mm_xor_si128(characters, small));
    return overwriteRuns(out, moment, _mm_andnot_si128(caseBit, characters));
}

// In steps of as much room as a picture usually needs. Not inlined: short ones are faster then.
template <class Moment>
[[gnu::noinline]] void writeAnyPicture(SV::String& text, const Moment& moment,
                                       std::string_view picture) {
    constexpr std::size_t kNames = 40;
    for (std::size_t room = picture.size() + kNames; !picture.empty(); room *= 2) {
        const std::size_t size = text.size();
        text.resizeAndOverwrite(room, [&](char* out, std::size_t capacity) {
            const Room place{out + size, out + capacity};
            return static_cast<std::size_t>(writeBeginning(place, moment, picture) - out);
        });
    }
}

// There is one text, so that it is made where the caller wants it.
template <class Moment>
SV::String byPicture(const Moment& moment, std::string_view picture) {
    SV::String text;
    if (picture.size() <= kScanStep) {
        text.resizeAndOverwrite(kScanStep, [&](char* out, std::size_t) {
            return writeNumbers(out, moment, picture) ? picture.size() : 0;
        });
    }
    if (text.empty()) writeAnyPicture(text, moment, picture);
    return text;
}

}  // namespace

SV::String ZelDate::GetFormatedDate(const SV::Date& date, const SV::String& format) {
    return format.empty() ? localeDate(date) : byPicture(date, format);
}

SV::String ZelDate::GetFormatedTime(const SV::Time& time, const SV::String& format) {
    return format.empty() ? localeTime(time) : byPicture(time, format);
}
