// Dates and times by pictures.

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstring>
#include <utility>

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

// A text that is put together on the stack, in pieces: one is enough for the usual picture. Where
// the piece ends is in the writer's hands, that is in a register.
class Pieces {
public:
    char* begin() { return m_piece; }

    // Makes room for `kRoom` bytes, which a number needs less than; the others rely on it.
    char* withRoom(char* end) { return end <= m_piece + (kSize - kRoom) ? end : handOn(end); }
    char* add(char* end, const SV::String& name) {
        const std::size_t size = name.size();
        if (size > kRoom) {
            handOn(end);
            m_before += name;
            return m_piece;
        }
        std::memcpy(end, name.data(), kRoom);  // of a constant size: a `String` holds that much
        return end + size;
    }
    char* add(char* end, std::size_t count, char c) {
        if (count <= kRoom) return std::fill_n(end, count, c);
        handOn(end);
        m_before.append(count, c);
        return m_piece;
    }
    SV::String text(const char* end) {
        SV::String text = std::move(m_before);
        if (text.empty()) {
            text.assignPadded(m_piece, static_cast<std::size_t>(end - m_piece));
        } else {
            text.append(m_piece, static_cast<std::size_t>(end - m_piece));
        }
        return text;
    }

private:
    static constexpr std::size_t kSize = 256;
    static constexpr std::size_t kRoom = 16;
    static_assert(kRoom <= SV::String::kInlineCapacity);

    char* handOn(const char* end) {
        m_before.append(m_piece, static_cast<std::size_t>(end - m_piece));
        return m_piece;
    }

    SV::String m_before;
    char m_piece[kSize];
};

// Writes what a run stands for at `out`; null when it stands for itself.
char* writeField(Pieces& pieces, char* out, const SV::Date& date, int field) {
    switch (field) {
        case run('D', 2):
            return writeTwo(out, date.GetDay());
        case run('D', 3):
            return pieces.add(out, weekdayName(date.GetDayOfWeek()));
        case run('M', 2):
            return writeTwo(out, date.GetMonth());
        case run('M', 3):
            return pieces.add(out, monthName(date.GetMonth() - 1));
        case run('Y', 2):
            return writeTwo(out, date.GetYear() % 100);
        case run('Y', 4):
            return writeYear(out, date.GetYear());
        default:
            return nullptr;
    }
}

char* writeField(Pieces&, char* out, const SV::Time& time, int field) {
    switch (field) {
        case run('H', 2):
            return writeTwo(out, time.GetHour());
        case run('M', 2):
            return writeTwo(out, time.GetMin());
        case run('S', 2):
            return writeTwo(out, time.GetSec());
        default:
            return nullptr;
    }
}

template <class Moment>
SV::String byPicture(const Moment& moment, const SV::String& format) {
    Pieces pieces;
    char* out = pieces.begin();
    const char* const last = format.end();
    for (const char* start = format.begin(); start != last;) {
        out = pieces.withRoom(out);
        const char letter = upper(*start);
        const char* const begin = start++;
        if (!isPictureLetter(moment, letter)) {
            *out++ = letter;
            continue;
        }
        while (start != last && upper(*start) == letter) ++start;
        const auto length = static_cast<std::size_t>(start - begin);
        char* const next = writeField(pieces, out, moment, run(letter, length));
        out = next ? next : pieces.add(out, length, letter);
    }
    return pieces.text(out);
}

}  // namespace

SV::String ZelDate::GetFormatedDate(const SV::Date& date, const SV::String& format) {
    return format.empty() ? localeDate(date) : byPicture(date, format);
}

SV::String ZelDate::GetFormatedTime(const SV::Time& time, const SV::String& format) {
    return format.empty() ? localeTime(time) : byPicture(time, format);
}
