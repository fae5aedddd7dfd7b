#include "zbasic/zcoretime.h"

#include <cstdint>
#include <limits>

#include "time/saturate.h"
#include "zbasic/ztools.h"

namespace {

constexpr double kMaximum = std::numeric_limits<double>::max();

}  // namespace

double ZelCoreTime::g_dDaysPerYear = 365.0;
double ZelCoreTime::g_dHoursPerDay = 24.0;
bool ZelCoreTime::g_bWarned = false;

ZelCoreTime::ZelCoreTime() : m_maximum(kMaximum) { setBase(0.0, 0.0); }

ZelCoreTime::ZelCoreTime(const ZelCoreTime& other)
    : m_value(other.m_value),
      m_maximum(kMaximum),
      m_daysPerYear(other.m_daysPerYear),
      m_hoursPerDay(other.m_hoursPerDay),
      m_overflow(other.m_overflow) {}

ZelCoreTime::ZelCoreTime(const char* text) : ZelCoreTime(text, 0.0, 0.0) {}

ZelCoreTime::ZelCoreTime(const long long& seconds) : ZelCoreTime(seconds, 0.0, 0.0) {}

ZelCoreTime::ZelCoreTime(const double& seconds) : ZelCoreTime() {
    m_value = seconds;
    m_overflow = m_value < 0;  // Relied on by callers: no look at the upper bound
}

ZelCoreTime::ZelCoreTime(const char* text, const char* daysPerYear, const char* hoursPerDay)
    : ZelCoreTime(text, zel_atof(daysPerYear), zel_atof(hoursPerDay)) {}

ZelCoreTime::ZelCoreTime(const long long& seconds, const double& daysPerYear,
                         const double& hoursPerDay)
    : ZelCoreTime(static_cast<double>(seconds), daysPerYear, hoursPerDay) {}

ZelCoreTime::ZelCoreTime(const double& seconds, const double& daysPerYear,
                         const double& hoursPerDay)
    : m_value(seconds), m_maximum(kMaximum) {
    setBase(daysPerYear, hoursPerDay);
    m_overflow = m_value < 0 || m_value > m_maximum;
}

ZelCoreTime::ZelCoreTime(const char* text, const double& daysPerYear, const double& hoursPerDay)
    : m_maximum(kMaximum) {
    setBase(daysPerYear, hoursPerDay);  // first: the text is read by it
    m_value = _s2d(text);
    m_overflow = m_value < 0 || m_value > m_maximum;
}

void ZelCoreTime::setBase(long daysPerYear, long hoursPerDay) {
    setBase(static_cast<double>(daysPerYear), static_cast<double>(hoursPerDay));
}

void ZelCoreTime::setBase(double daysPerYear, double hoursPerDay) {
    m_daysPerYear = daysPerYear == 0 ? g_dDaysPerYear : daysPerYear;
    m_hoursPerDay = hoursPerDay == 0 ? g_dHoursPerDay : hoursPerDay;
}

void ZelCoreTime::SetStaticTimeBase(double daysPerYear, double hoursPerDay) {
    g_dDaysPerYear = daysPerYear;
    g_dHoursPerDay = hoursPerDay;
}

double ZelCoreTime::GetStaticDaysPerYear() { return g_dDaysPerYear; }

double ZelCoreTime::GetStaticHoursPerDay() { return g_dHoursPerDay; }

bool ZelCoreTime::WillBeSumOverflow(const long long& a, const long long& b) {
    using Wrapping = std::uint64_t;
    const auto sum = static_cast<std::int64_t>(static_cast<Wrapping>(a) + static_cast<Wrapping>(b));
    return static_cast<double>(sum) > kMaximum;  // Relied on by callers: never true
}

long long ZelCoreTime::asSeconds() const { return saturated<std::int64_t>(m_value + 0.5); }

long ZelCoreTime::asLong() const {
    // Relied on by callers: 0, not the largest number.
    if (m_value > std::numeric_limits<std::int32_t>::max()) return 0;
    return saturated<std::int32_t>(m_value + 0.5);
}

const SV::String& ZelCoreTime::asString() const { return _d2s(m_value); }

const char* ZelCoreTime::asChar() const { return asString().c_str(); }

void ZelCoreTime::setAsChar(const char* text) { m_value = _s2d(text); }

void ZelCoreTime::setTime(const double& seconds) { m_value = seconds; }

ZelCoreTime& ZelCoreTime::operator=(const ZelCoreTime& other) {
    m_value = other.m_value;
    return *this;
}

ZelCoreTime& ZelCoreTime::operator=(const char* text) {
    m_value = _s2d(text);
    return *this;
}

ZelCoreTime& ZelCoreTime::operator=(long seconds) {
    m_value = static_cast<double>(seconds);
    return *this;
}

ZelCoreTime& ZelCoreTime::operator=(const long long& seconds) {
    m_value = static_cast<double>(seconds);
    return *this;
}

ZelCoreTime& ZelCoreTime::operator=(double seconds) {
    m_value = seconds;
    return *this;
}

void ZelCoreTime::addGuarded(double seconds) {
    if (seconds >= 0 && m_value + seconds <= m_maximum) {
        m_value += seconds;
    } else {
        m_overflow = true;
    }
}

ZelCoreTime& ZelCoreTime::operator+=(const long long& seconds) {
    addGuarded(static_cast<double>(seconds));
    return *this;
}

ZelCoreTime& ZelCoreTime::operator+=(double seconds) {
    addGuarded(seconds);
    return *this;
}

ZelCoreTime& ZelCoreTime::operator+=(const ZelCoreTime& other) {
    m_value += other.m_value;  // Relied on by callers: unguarded
    return *this;
}

ZelCoreTime& ZelCoreTime::operator+=(const char* text) {
    m_value += _s2d(text);
    return *this;
}

ZelCoreTime& ZelCoreTime::operator-=(const char* text) {
    m_value -= _s2d(text);
    if (m_value < 0) m_value = 0;
    return *this;
}

ZelCoreTime& ZelCoreTime::operator*=(double factor) {
    if (factor < 0) {
        m_overflow = true;
        return *this;
    }
    m_value *= factor;
    if (m_value > m_maximum) m_overflow = true;
    return *this;
}

ZelCoreTime& ZelCoreTime::operator/=(double divisor) {
    if (divisor <= 0) m_overflow = true;
    // Relied on by callers: a negative divisor sets the flag and divides.
    if (divisor != 0) m_value /= divisor;
    return *this;
}

ZelCoreTime operator+(const ZelCoreTime& a, const ZelCoreTime& b) {
    return {a.m_value + b.m_value, a.m_daysPerYear, a.m_hoursPerDay};
}

void ZelCoreTime::ResetWarnButtonPressed() { g_bWarned = false; }
