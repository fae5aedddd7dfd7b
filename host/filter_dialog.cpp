#include "filter_dialog.h"

#include <string>

#include <windows.h>

namespace zelhost {

namespace {

constexpr SV::ResId kDialog(40100, SV::ResId::kDialog);
constexpr SV::ResId kDayMonth(ZelDayMonthControl::kResource, SV::ResId::kDialog);

enum ControlId : int { kIsFiltered = 101, kPlace = 102, kYear = 103 };

}  // namespace

FilterDialog::FilterDialog(SV::Window* owner, const SV::Date& last)
    : SV::Dialog(owner, kDialog),
      m_year(last.GetYear()),
      m_place(*this, kPlace),
      m_day(this, kDayMonth, 0, 0) {
    m_day.SetArea(m_place.GetArea());
    m_place.Hide();
    // Between the check box and the buttons, for the Tab key.
    ::SetWindowPos(m_day.GetHandle(), m_place.GetHandle(), 0, 0, 0, 0,
                   SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
    m_day.AllowFebruary29th(ZelDate::IsLeapYear(m_year));
    m_day.SetMonth(last.GetMonth() - 1);
    m_day.SetDay(last.GetDay());
    ::SetDlgItemTextA(GetHandle(), kYear, std::to_string(m_year).c_str());
    ::CheckDlgButton(GetHandle(), kIsFiltered, BST_CHECKED);
}

bool FilterDialog::isFiltered() const {
    return ::IsDlgButtonChecked(GetHandle(), kIsFiltered) == BST_CHECKED;
}

SV::Date FilterDialog::since() const { return {m_day.GetDay(), m_day.GetMonth() + 1, m_year}; }

void FilterDialog::Notify(int id, int code) {
    if (id == kIsFiltered && code == BN_CLICKED) m_day.SetEnabled(isFiltered());
}

}  // namespace zelhost
