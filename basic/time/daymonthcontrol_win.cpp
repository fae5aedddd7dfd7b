// Lists of months and weekdays, and the control for a day of the year.

#include "zbasic/zdattime.h"
#include "zbasic/ztrace.h"

namespace {

constexpr char kSource[] = "zdattime.cpp";
constexpr unsigned kNoSuchMonth = 984;

enum PartId : int { kDayField = 101, kSpinButtons = 102, kMonthList = 103 };

template <class GetName>
bool fill(SV::ListBox* list, int count, GetName getName) {
    if (!list) return false;
    list->Clear();
    for (int index = 0; index < count; ++index) list->Append(getName(index));
    list->SelectPos(0);
    return true;
}

}  // namespace

bool ZelDate::FillListBoxWithMonthNames(SV::ListBox* list) {
    return fill(list, 12, [](int month) { return MonthToStr(month); });
}

bool ZelDate::FillListBoxWithWeekdayNames(SV::ListBox* list) {
    return fill(list, 7, [](int weekday) { return WeekdayToStr(weekday); });
}

ZelDayMonthControl::ZelDayMonthControl(SV::Window* parent, const SV::ResId& id, int dayWidth,
                                       int monthWidth)
    : SV::Control(parent, id), m_day(*this, kDayField, kSpinButtons), m_month(*this, kMonthList) {
    ZelDate::FillListBoxWithMonthNames(&m_month);
    m_day.SetMin(1);
    limitDay();
    setWidths(dayWidth > 0 ? dayWidth : GetMFWidth(), monthWidth > 0 ? monthWidth : GetLBWidth());
}

int ZelDayMonthControl::GetDay() const { return m_day.GetValue(); }

void ZelDayMonthControl::SetDay(int day) { m_day.SetValue(day); }

int ZelDayMonthControl::GetMonth() const { return m_month.GetSelectedPos(); }

void ZelDayMonthControl::SetMonth(int month) {
    if (!ZelDate::MonthIsValid(month)) return displayErrorMessage(kSource, kNoSuchMonth);
    m_month.SelectPos(month);
    limitDay();
}

SV::String ZelDayMonthControl::GetMonthString() const { return ZelDate::MonthToStr(GetMonth()); }

void ZelDayMonthControl::SetMonthString(const SV::String& name) {
    int month = 0;
    ZelDate::StrToMonth(name, month);
    SetMonth(month);
}

void ZelDayMonthControl::AllowFebruary29th(bool isAllowed) {
    m_isFebruary29thAllowed = isAllowed;
    limitDay();
}

void ZelDayMonthControl::limitDay() {
    int days = 0;
    if (!ZelDate::GetMaxDayOfMonth(GetMonth(), days, m_isFebruary29thAllowed)) {
        return displayErrorMessage(kSource, kNoSuchMonth);
    }
    m_day.SetMax(days);
}

void ZelDayMonthControl::setWidths(int dayWidth, int monthWidth) {
    const SV::Area day = m_day.GetArea(), month = m_month.GetArea(), all = GetArea();
    const int gap = month.x - day.x - day.width;
    m_day.SetArea({day.x, day.y, dayWidth, day.height});
    m_month.SetArea({day.x + dayWidth + gap, month.y, monthWidth, month.height});
    SetArea({all.x, all.y, day.x + dayWidth + gap + monthWidth, all.height});
}

void ZelDayMonthControl::SetMFWidth(int width) { setWidths(width, GetLBWidth()); }

int ZelDayMonthControl::GetMFWidth() const { return m_day.GetArea().width; }

void ZelDayMonthControl::SetLBWidth(int width) { setWidths(GetMFWidth(), width); }

int ZelDayMonthControl::GetLBWidth() const { return m_month.GetArea().width; }

void ZelDayMonthControl::Resize() {
    const SV::Area month = m_month.GetArea();
    const int width = GetArea().width - month.x;
    if (width > 0) m_month.SetArea({month.x, month.y, width, month.height});
}

void ZelDayMonthControl::SetEnabled(bool isEnabled) {
    SV::Control::SetEnabled(isEnabled);
    m_day.SetEnabled(isEnabled);
    m_month.SetEnabled(isEnabled);
}

void ZelDayMonthControl::Notify(int id, int code) {
    if (id == kMonthList && m_month.IsSelection(code)) limitDay();
}
