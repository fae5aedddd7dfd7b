// Formats of the user's locale.

#pragma once

#include "sv/datetime.h"
#include "sv/export.h"
#include "sv/string.h"

namespace SV {

// How dates and times are written for the user, and the texts of the standard
// buttons. A fresh object has the settings of the user's locale.
class SV_API International {
public:
    International();  // the button texts are the English ones

    // In the locale's short form, long form, and time form. A date that is no day gives an empty
    // text. Hours need not end at 23, and of a negative time the magnitude is written; without
    // seconds their separator goes, too, and there are no hundredths.
    String GetDate(const Date& date) const;
    String GetLongDate(const Date& date) const;
    String GetTime(const Time& time, bool withSeconds = true, bool withHundredths = false) const;
    // Whether years in long dates have four digits (as the locale says at first).
    void ChangeLongDateCentury(bool withCentury) { m_longDateCentury = withCentury; }

    // The texts of the standard buttons. Only kept here, for whoever makes buttons.
    const String& GetOKText() const { return m_ok; }
    const String& GetCancelText() const { return m_cancel; }
    const String& GetHelpText() const { return m_help; }
    void ChangeOKText(const String& text) { m_ok = text; }
    void ChangeCancelText(const String& text) { m_cancel = text; }
    void ChangeHelpText(const String& text) { m_help = text; }

private:
    String m_shortDate;  // pictures as the system has them ("dd.MM.yyyy")
    String m_longDate;
    String m_time;
    String m_decimal;
    bool m_longDateCentury = true;
    String m_ok = "OK";
    String m_cancel = "Cancel";
    String m_help = "Help";
};

}  // namespace SV
