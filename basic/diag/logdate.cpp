#include "diag/logdate.h"

#include <algorithm>
#include <cstdint>
#include <limits>

#include "sv/ascii.h"

namespace {

constexpr int kLastField = 2;

// Stays at the largest number, as reading a text of too many digits does elsewhere.
int withDigit(int value, char digit) {
    constexpr std::int64_t kLargest = std::numeric_limits<int>::max();
    return static_cast<int>(std::min(std::int64_t{value} * 10 + (digit - '0'), kLargest));
}

}  // namespace

bool LogDateScan::take(std::string_view block) {
    return std::ranges::all_of(block, [this](char c) { return takeByte(c); });
}

bool LogDateScan::takeByte(char c) {
    if (m_state == State::kDone) return false;
    Number& number = m_numbers[m_field];
    if (SV::IsAsciiDigit(c)) {
        number.value = withDigit(number.value, c);
        number.hasDigits = true;
        m_state = State::kDigits;
    } else if (m_state == State::kSpace && (c == '+' || c == '-')) {
        number.isNegative = c == '-';
        m_state = State::kSign;
    } else if (m_state == State::kDigits && c == '.' && m_field < kLastField) {
        ++m_field;
        m_state = State::kSpace;
    } else if (m_state != State::kSpace || !SV::IsAsciiSpace(c)) {
        m_state = State::kDone;
    }
    return m_state != State::kDone;
}

std::optional<SV::Date> LogDateScan::date() const {
    const auto& [year, month, day] = m_numbers;
    if (!year.hasDigits || !month.hasDigits || !day.hasDigits) return std::nullopt;
    if (year.isNegative || month.isNegative || day.isNegative) return std::nullopt;
    if (month.value > 99 || day.value > 99) return std::nullopt;
    return SV::Date(day.value, month.value, year.value % 10'000);
}
