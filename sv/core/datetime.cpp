#include "sv/datetime.h"

namespace SV {

DayOfWeek Date::GetDayOfWeek() const {
    // Days since a Monday, the year counted from March so that the leap day comes last.
    const int shift = GetMonth() < 3 ? 1 : 0;
    const int year = GetYear() - shift;
    const int month = GetMonth() + 12 * shift - 3;
    const int days = 365 * year + year / 4 - year / 100 + year / 400 + (153 * month + 2) / 5;
    return static_cast<DayOfWeek>((days + GetDay() + 1) % 7);
}

}  // namespace SV
