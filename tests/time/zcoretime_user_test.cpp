// What users see of durations, dates and times.

#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <vector>

#include "support/box_watcher.h"
#include "sv/international.h"
#include "sv/window.h"
#include "zbasic/zcoretime.h"
#include "zbasic/zdattime.h"
#include "zbasic/zevent.h"

#include <windows.h>

namespace {

constexpr double kMost = std::numeric_limits<double>::max();

// Notes each change of the stack of parent windows.
class StackNotes : public ZelEventListener {
public:
    StackNotes() {
        setEventHandler(ZelEvent_ZelWindowStackChanged, static_cast<Handler>(&StackNotes::note), 0);
    }
    void note(ZelEvent* event) {
        const auto& change = static_cast<const ZelWindowStackChangedEvent&>(*event);
        notes.push_back((change.IsAdded() ? "+" : "-") + std::to_string(change.GetNumber()) + " " +
                        change.GetText().c_str());
    }

    std::vector<std::string> notes;
};

}  // namespace

TEST(CoreTimeWarning, IsShownOnce) {
    const StackNotes stack;
    const BoxWatcher watcher(IDOK);
    SV::MDIFrame frame("Model");
    ZelCoreTime::ResetWarnButtonPressed();
    ZelCoreTime fine(5.0), spoilt(-5.0);
    fine.tstOverFlow(&frame, "unseen");
    EXPECT_EQ(fine.asDouble(), 5);
    spoilt.tstOverFlow(&frame, "Too long.");
    EXPECT_EQ(spoilt.asDouble(), kMost);
    EXPECT_TRUE(spoilt.overFlow());
    const SeenBox box = watcher.waitFor(1)[0];
    EXPECT_EQ(box.text, "Too long.");
    EXPECT_EQ(box.buttons.size(), 1u);
    EXPECT_EQ(stack.notes, (std::vector<std::string>{"+1 Model", "-0 Model"}));

    spoilt = 1.0;
    spoilt.tstOverFlow(&frame, "unseen");
    EXPECT_EQ(spoilt.asDouble(), kMost) << "limited every time";
    EXPECT_EQ(watcher.seen().size(), 1u);
    ZelCoreTime::ResetWarnButtonPressed();
    spoilt.tstOverFlow(nullptr, "Again.");
    EXPECT_EQ(watcher.waitFor(2)[1].text, "Again.");
    EXPECT_EQ(stack.notes.size(), 4u);
}

TEST(CoreDateDisplay, IsInTheFormOfTheLocale) {
    const SV::International locale;
    const SV::Date day(29, 2, 2024);
    const SV::Time time(13, 5, 9);
    const ZelCoreDate date("2024:02:29");
    EXPECT_EQ(date.GetDisplayString(false), locale.GetDate(day));
    EXPECT_NE(date.GetDisplayString(true).find("2024"), SV::String::npos);
    EXPECT_NE(date.GetDisplayString(true), date.GetDisplayString(false));
    const ZelCoreDateTime moment("2024:02:29 13:05:09");
    for (const bool isLong : {false, true}) {
        EXPECT_EQ(moment.GetDisplayString(isLong),
                  date.GetDisplayString(isLong) + " " + locale.GetTime(time));
    }
    // Texts that are none leave the clock's day: now, or just before midnight.
    const SV::String before = locale.GetDate(SV::Date());
    const SV::String today = ZelCoreDate("2023:02:29").GetDisplayString(false);
    EXPECT_TRUE(today == before || today == locale.GetDate(SV::Date())) << today.c_str();
    EXPECT_EQ(ZelDate::GetFormatedDate(day, ""), locale.GetDate(day));
    EXPECT_EQ(ZelDate::GetFormatedTime(SV::Time(13, 5, 9, 7), ""), locale.GetTime(time));
}
