#include "sv/international.h"

#include <algorithm>
#include <charconv>
#include <string>

#include <windows.h>

namespace SV {

namespace {

String localeText(LCTYPE item) {
    char text[256] = "";
    ::GetLocaleInfoA(LOCALE_USER_DEFAULT, item, text, sizeof text);
    return String(text);
}

// The picture with each year in it replaced by `digits`, as the literal text that it then is.
String withLiteralYear(const String& picture, const String& digits) {
    const String lastTwo = digits.size() > 2 ? digits.substr(digits.size() - 2) : digits;
    String result;
    for (std::size_t pos = 0; pos < picture.size();) {
        std::size_t end = pos + 1;
        while (picture[pos] == 'y' && picture[end] == 'y') ++end;
        if (picture[pos] != 'y') {
            result += picture[pos];
        } else {
            result += "'" + (end - pos > 2 ? digits : lastTwo) + "'";
        }
        pos = end;
    }
    return result;
}

String dateBy(String picture, const Date& date) {
    // The system's calendar begins in 1601; it repeats every 400 years.
    constexpr int kFirstYear = 1601;
    int year = date.GetYear();
    if (year < kFirstYear) {
        picture = withLiteralYear(picture, String(std::to_string(year)));
        while (year < kFirstYear) year += 400;
    }
    SYSTEMTIME day = {};
    day.wYear = static_cast<WORD>(year);
    day.wMonth = static_cast<WORD>(date.GetMonth());
    day.wDay = static_cast<WORD>(date.GetDay());
    char text[256] = "";
    ::GetDateFormatA(LOCALE_USER_DEFAULT, 0, &day, picture.c_str(), text, sizeof text);
    return String(text);  // empty for a day that does not exist
}

void appendNumber(String& text, int value, std::size_t width) {
    char digits[16];
    const auto end = std::to_chars(digits, digits + sizeof digits, value).ptr;
    const auto length = static_cast<std::size_t>(end - digits);
    if (length < width) text.append(width - length, '0');
    text.append(digits, length);
}

// Writes one time by a picture such as "HH:mm:ss" or "h:mm:ss tt". The system's own formatter
// refuses hours beyond 23, which callers have.
class TimeFormat {
public:
    TimeFormat(const Time& time, const String& decimal, bool withSeconds, bool withHundredths)
        : m_time(time),
          m_decimal(decimal),
          m_withSeconds(withSeconds),
          m_withHundredths(withHundredths) {}

    String write(const String& picture) {
        std::size_t pos = 0;
        while (pos < picture.size()) {
            std::size_t end = pos + 1;
            if (picture[pos] == '\'') {
                end = addLiteral(picture, end);
            } else {
                while (end < picture.size() && picture[end] == picture[pos]) ++end;
                writeRun(picture[pos], end - pos);
            }
            pos = end;
        }
        return m_text + m_separator;
    }

private:
    // What stands between quotation marks is written as it is; returns the place behind it.
    std::size_t addLiteral(const String& picture, std::size_t start) {
        const std::size_t end = std::min(picture.find('\'', start), picture.size());
        m_separator += end == start ? String("'") : picture.substr(start, end - start);
        return std::min(end + 1, picture.size());
    }
    void writeRun(char c, std::size_t count) {
        const std::size_t width = count > 1 ? 2 : 1;
        switch (c) {
            case 'H':
                return writeField(m_time.GetHour(), width);
            case 'h':
                return writeField((m_time.GetHour() + 11) % 12 + 1, width);
            case 'm':
                return writeField(m_time.GetMin(), width);
            case 's':
                return writeSeconds(width);
            case 't':
                return writeMarker(count);
            default:
                m_separator.append(count, c);
        }
    }
    // Separators wait for the field behind them: without seconds theirs goes, too.
    void writeField(int value, std::size_t width) {
        flushSeparator();
        appendNumber(m_text, value, width);
    }
    void writeSeconds(std::size_t width) {
        if (!m_withSeconds) return m_separator.clear();
        writeField(m_time.GetSec(), width);
        if (!m_withHundredths) return;
        m_text += m_decimal;
        appendNumber(m_text, m_time.Get100Sec(), 2);
    }
    void writeMarker(std::size_t count) {
        flushSeparator();
        const String marker = localeText(m_time.GetHour() % 24 < 12 ? LOCALE_S1159 : LOCALE_S2359);
        m_text += count > 1 ? marker : marker.substr(0, 1);
    }
    void flushSeparator() {
        m_text += m_separator;
        m_separator.clear();
    }

    const Time& m_time;
    const String& m_decimal;
    const bool m_withSeconds;
    const bool m_withHundredths;
    String m_text;
    String m_separator;
};

String withYearDigits(const String& picture, bool withCentury) {
    const std::size_t start = picture.find('y');
    if (start == String::npos) return picture;
    std::size_t end = start;
    while (picture[end] == 'y') ++end;
    String changed(picture);
    return changed.replace(start, end - start, withCentury ? "yyyy" : "yy");
}

}  // namespace

International::International()
    : m_shortDate(localeText(LOCALE_SSHORTDATE)),
      m_longDate(localeText(LOCALE_SLONGDATE)),
      m_time(localeText(LOCALE_STIMEFORMAT)),
      m_decimal(localeText(LOCALE_SDECIMAL)),
      m_longDateCentury(m_longDate.find("yyyy") != String::npos) {}

String International::GetDate(const Date& date) const { return dateBy(m_shortDate, date); }

String International::GetLongDate(const Date& date) const {
    return dateBy(withYearDigits(m_longDate, m_longDateCentury), date);
}

String International::GetTime(const Time& time, bool withSeconds, bool withHundredths) const {
    return TimeFormat(time, m_decimal, withSeconds, withHundredths).write(m_time);
}

}  // namespace SV
