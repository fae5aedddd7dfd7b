// Durations, dates and pictures beside what the C library does with the same fields.

#include <benchmark/benchmark.h>

#include <cmath>
#include <cstdio>
#include <ctime>
#include <string>
#include <vector>

#include "zbasic/zcoretime.h"
#include "zbasic/zdattime.h"

namespace {

constexpr std::size_t kCount = 1024;  // a power of two

struct Base {
    double daysPerYear;
    double hoursPerDay;
};
constexpr Base kBases[] = {{365, 24}, {220, 8}, {365.25, 24}, {365, 7.7}};

double secondsAt(std::size_t i) {
    return std::floor(static_cast<double>(i) * 1e8 / 3) / 4;  // up to 270 years, with quarters
}

// The same steps with `floor` and one `snprintf`.
std::string printed(double seconds, const Base& base) {
    const double perDay = base.hoursPerDay * 3600, perYear = perDay * base.daysPerYear;
    double rest = seconds + 0.5;
    const double years = std::floor(rest / perYear);
    rest -= years * perYear;
    const double days = std::floor(rest / perDay);
    rest -= days * perDay;
    const double hours = std::floor(rest / 3600);
    rest -= hours * 3600;
    const double minutes = std::floor(rest / 60);
    char text[64];
    const int size =
        std::snprintf(text, sizeof text, "%02.0f:%03d:%02d:%02d:%02d", years,
                      static_cast<int>(days), static_cast<int>(hours), static_cast<int>(minutes),
                      static_cast<int>(std::floor(rest - minutes * 60)));
    return std::string(text, static_cast<std::size_t>(size));
}

void durationToText(benchmark::State& state) {
    const Base& base = kBases[state.range(0)];
    std::vector<ZelCoreTime> times;
    for (std::size_t i = 0; i < kCount; ++i) {
        times.emplace_back(secondsAt(i), base.daysPerYear, base.hoursPerDay);
        if (times.back().asString() != printed(secondsAt(i), base)) {
            return state.SkipWithError("other texts");
        }
    }
    std::size_t i = 0;
    for (auto _ : state) benchmark::DoNotOptimize(times[++i % kCount].asChar());
}

void durationToTextSnprintf(benchmark::State& state) {
    const Base& base = kBases[state.range(0)];
    std::size_t i = 0;
    for (auto _ : state) {
        const std::string text = printed(secondsAt(++i % kCount), base);
        benchmark::DoNotOptimize(text.data());
    }
}

std::vector<std::string> durationTexts() {
    std::vector<std::string> texts;
    for (std::size_t i = 0; i < kCount; ++i) texts.push_back(printed(secondsAt(i), kBases[0]));
    return texts;
}

double scanned(const char* text) {
    long years = 0;
    int days = 0, hours = 0, minutes = 0, seconds = 0;
    if (std::sscanf(text, "%ld:%3d:%2d:%2d:%2d", &years, &days, &hours, &minutes, &seconds) != 5) {
        return 0;
    }
    return static_cast<double>(years) * 31536000.0 + seconds + minutes * 60 + hours * 3600 +
           days * 86400.0;
}

void textToDuration(benchmark::State& state) {
    const std::vector<std::string> texts = durationTexts();
    ZelCoreTime time;
    for (const std::string& text : texts) {
        time.setAsChar(text.c_str());
        if (time.asDouble() != scanned(text.c_str())) return state.SkipWithError("other values");
    }
    std::size_t i = 0;
    for (auto _ : state) {
        time.setAsChar(texts[++i % kCount].c_str());
        benchmark::DoNotOptimize(time.asDouble());
    }
}

void isTime(benchmark::State& state) {
    const std::vector<std::string> texts = durationTexts();
    std::size_t i = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(ZelCoreTime::isTime(texts[++i % kCount].c_str()));
    }
}

void textToDurationSscanf(benchmark::State& state) {
    const std::vector<std::string> texts = durationTexts();
    std::size_t i = 0;
    for (auto _ : state) benchmark::DoNotOptimize(scanned(texts[++i % kCount].c_str()));
}

struct DateParser : ZelCoreDate {
    using ZelCoreDate::_ImpParse;
};
struct DateTimeParser : ZelCoreDateTime {
    using ZelCoreDateTime::_ImpParse;
};

constexpr char kDateTimeFormat[] = "%04d:%02d:%02d %02d:%02d:%02d";

std::vector<std::string> dateTexts(bool withTime) {
    std::vector<std::string> texts;
    for (int i = 0; i < static_cast<int>(kCount); ++i) {
        char text[80];
        std::snprintf(text, sizeof text, kDateTimeFormat, 1900 + i % 200, 1 + i % 12, 1 + i % 28,
                      i % 24, i % 60, i * 7 % 60);
        texts.emplace_back(text, withTime ? 19u : 10u);
    }
    return texts;
}

bool scanDate(const char* text, SV::Date& date) {
    int year = 0, month = 0, day = 0;
    if (std::sscanf(text, "%4d:%2d:%2d", &year, &month, &day) != 3) return false;
    date = SV::Date(day, month, year);
    return true;
}

bool scanDateTime(const char* text, SV::Date& date, SV::Time& time) {
    int year = 0, month = 0, day = 0, hour = 0, minute = 0, second = 0;
    if (std::sscanf(text, "%4d:%2d:%2d %2d:%2d:%2d", &year, &month, &day, &hour, &minute,
                    &second) != 6) {
        return false;
    }
    date = SV::Date(day, month, year);
    time = SV::Time(hour, minute, second);
    return true;
}

// `parse` over all texts, after a look that `other` reads the same.
template <class Parse, class Other>
void readDates(benchmark::State& state, bool withTime, Parse parse, Other other) {
    const std::vector<std::string> texts = dateTexts(withTime);
    SV::Date date(1, 1, 1), otherDate(1, 1, 1);
    SV::Time time(0, 0), otherTime(0, 0);
    for (const std::string& text : texts) {
        if (!parse(text.c_str(), date, time) || !other(text.c_str(), otherDate, otherTime) ||
            date != otherDate || time != otherTime) {
            return state.SkipWithError("other dates");
        }
    }
    std::size_t i = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(parse(texts[++i % kCount].c_str(), date, time));
        benchmark::DoNotOptimize(date);
    }
}

const auto kParseDate = [](const char* text, SV::Date& date, SV::Time&) {
    return DateParser::_ImpParse(text, &date);
};
const auto kScanDate = [](const char* text, SV::Date& date, SV::Time&) {
    return scanDate(text, date);
};
const auto kParseDateTime = [](const char* text, SV::Date& date, SV::Time& time) {
    return DateTimeParser::_ImpParse(text, &date, &time);
};

void textToDate(benchmark::State& state) { readDates(state, false, kParseDate, kScanDate); }
void textToDateSscanf(benchmark::State& state) { readDates(state, false, kScanDate, kParseDate); }
void textToDateTime(benchmark::State& state) {
    readDates(state, true, kParseDateTime, scanDateTime);
}
void textToDateTimeSscanf(benchmark::State& state) {
    readDates(state, true, scanDateTime, kParseDateTime);
}

struct Picture {
    const char* ours;
    const char* theirs;
};
constexpr Picture kDatePictures[] = {{"dd.mm.yyyy", "%d.%m.%Y"},
                                     {"ddd, dd. mmm yyyy", "%A, %d. %B %Y"}};
constexpr Picture kTimePictures[] = {{"hh:mm:ss", "%H:%M:%S"}};

std::tm fieldsAt(std::size_t i) {
    const auto number = static_cast<int>(i % kCount);
    std::tm fields = {};
    fields.tm_year = 100 + number % 99;
    fields.tm_mon = number % 12;
    fields.tm_mday = 1 + number % 28;
    fields.tm_hour = number % 24;
    fields.tm_min = number % 60;
    fields.tm_sec = number * 7 % 60;
    const SV::Date date(fields.tm_mday, fields.tm_mon + 1, fields.tm_year + 1900);
    fields.tm_wday = (date.GetDayOfWeek() + 1) % 7;
    return fields;
}

std::string byStrftime(const std::tm& fields, const char* format) {
    char text[80];
    return std::string(text, std::strftime(text, sizeof text, format, &fields));
}

SV::Date dateOf(const std::tm& fields) {
    return {fields.tm_mday, fields.tm_mon + 1, fields.tm_year + 1900};
}
SV::Time timeOf(const std::tm& fields) { return {fields.tm_hour, fields.tm_min, fields.tm_sec}; }

template <class Moment>
void picture(benchmark::State& state, const Picture& picture, Moment (*momentOf)(const std::tm&),
             SV::String (*write)(const Moment&, const SV::String&)) {
    const SV::String format = picture.ours;
    std::vector<Moment> moments;
    for (std::size_t i = 0; i < kCount; ++i) {
        moments.push_back(momentOf(fieldsAt(i)));
        if (write(moments.back(), format) != byStrftime(fieldsAt(i), picture.theirs)) {
            return state.SkipWithError("other texts");
        }
    }
    std::size_t i = 0;
    for (auto _ : state) {
        const SV::String text = write(moments[++i % kCount], format);
        benchmark::DoNotOptimize(text.data());
    }
}

void datePicture(benchmark::State& state) {
    picture(state, kDatePictures[state.range(0)], dateOf, ZelDate::GetFormatedDate);
}
void timePicture(benchmark::State& state) {
    picture(state, kTimePictures[state.range(0)], timeOf, ZelDate::GetFormatedTime);
}

void strftimePicture(benchmark::State& state, const Picture* pictures) {
    std::vector<std::tm> moments;
    for (std::size_t i = 0; i < kCount; ++i) moments.push_back(fieldsAt(i));
    const char* const format = pictures[state.range(0)].theirs;
    std::size_t i = 0;
    for (auto _ : state) {
        const std::string text = byStrftime(moments[++i % kCount], format);
        benchmark::DoNotOptimize(text.data());
    }
}

void monthName(benchmark::State& state) {
    int month = 0;
    for (auto _ : state) {
        month = month == 11 ? 0 : month + 1;
        const SV::String name = ZelDate::MonthToStr(month);
        benchmark::DoNotOptimize(name.data());
    }
}

BENCHMARK(durationToText)->DenseRange(0, 3);
BENCHMARK(durationToTextSnprintf)->DenseRange(0, 3);
BENCHMARK(textToDuration);
BENCHMARK(isTime);
BENCHMARK(textToDurationSscanf);
BENCHMARK(textToDate);
BENCHMARK(textToDateSscanf);
BENCHMARK(textToDateTime);
BENCHMARK(textToDateTimeSscanf);
BENCHMARK(datePicture)->DenseRange(0, 1);
BENCHMARK_CAPTURE(strftimePicture, date, kDatePictures)->DenseRange(0, 1);
BENCHMARK(timePicture)->Arg(0);
BENCHMARK_CAPTURE(strftimePicture, time, kTimePictures)->Arg(0);
BENCHMARK(monthName);

}  // namespace
