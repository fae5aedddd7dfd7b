// Asks from which day on changes are of interest.

#pragma once

#include "sv/control.h"
#include "zbasic/zdattime.h"

namespace zelhost {

class FilterDialog : public SV::Dialog {
public:
    // `last` is the day that is offered; its year is the one that is asked about.
    FilterDialog(SV::Window* owner, const SV::Date& last);

    bool isFiltered() const;  // or are all nodes wanted?
    SV::Date since() const;

private:
    void Notify(int id, int code) override;

    const int m_year;
    SV::Control m_place;  // where the resource has the day
    ZelDayMonthControl m_day;
};

}  // namespace zelhost
