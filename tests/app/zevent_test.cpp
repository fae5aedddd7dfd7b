#include "zbasic/zevent.h"

#include <gtest/gtest.h>

#include <cstring>
#include <fstream>
#include <functional>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include "support/child.h"
#include "sv/window.h"

#include <io.h>
#include <windows.h>

namespace {

constexpr ZelEventType kType = ZelEvent_SaveModel;
constexpr ZelEventType kUnlisted = static_cast<ZelEventType>(9000);

class TestEvent : public ZelEvent {
public:
    explicit TestEvent(ZelEventType type = kType) : ZelEvent(type) {}
};

// Writes its letter for every call, then does what the test wants.
class Probe : public ZelEventListener {
public:
    Probe(char letter, std::string& calls) : m_letter(letter), m_calls(&calls) {}

    Probe& listen(ZelEventPriority priority = 0, ZelEventType type = kType) {
        setEventHandler(type, static_cast<Handler>(&Probe::onEvent), priority);
        return *this;
    }
    void onEvent(ZelEvent* event) {
        *m_calls += m_letter;
        const std::function<void(ZelEvent&)> work = action;  // survives the probe's own end
        if (work) work(*event);
    }

    std::function<void(ZelEvent&)> action;

private:
    char m_letter;
    std::string* m_calls;
};

std::string callsOf(std::string& calls, ZelEventType type = kType) {
    calls.clear();
    TestEvent(type).trigger();
    return calls;
}

}  // namespace

struct OrderCase {
    const char* why;
    std::vector<ZelEventPriority> registered;  // A, B, C, ... one after the other
    const char* called;
};

const OrderCase kOrders[] = {
    {"nobody", {}, ""},
    {"the newest of equal priority first", {0, 0, 0}, "CBA"},
    {"a high priority before the newest", {600, 0, 0}, "ACB"},
    {"into the middle", {600, 0, 300}, "ACB"},
    {"below all others", {600, 0, -1}, "ABC"},
    {"the newest among high ones, too", {600, 0, 600}, "CAB"},
    {"the whole range of a priority", {INT32_MIN, 0, INT32_MAX}, "CBA"},
};

TEST(EventOrder, IsByPriorityThenNewestFirst) {
    for (const auto& [why, registered, called] : kOrders) {
        for (const ZelEventType type : {kType, ZelEvent_First, ZelEvent_Last, kUnlisted}) {
            SCOPED_TRACE(::testing::Message() << why << ", type " << type);
            std::string calls;
            std::vector<std::unique_ptr<Probe>> probes;
            for (const ZelEventPriority priority : registered) {
                const char letter = static_cast<char>('A' + probes.size());
                probes.push_back(std::make_unique<Probe>(letter, calls));
                probes.back()->listen(priority, type);
            }
            EXPECT_EQ(callsOf(calls, type), called);
            probes.clear();
            EXPECT_EQ(callsOf(calls, type), "");
        }
    }
}

TEST(EventOrder, CountsEveryRegistrationOfAListener) {
    std::string calls;
    Probe a('A', calls), b('B', calls);
    a.listen(0);
    b.listen(5);
    a.listen(10).listen(0, ZelEvent_CreateModel);
    EXPECT_EQ(callsOf(calls), "ABA");
    EXPECT_EQ(callsOf(calls, ZelEvent_CreateModel), "A");
    EXPECT_EQ(callsOf(calls, ZelEvent_DeleteModel), "");
    a.manualSignOff();
    EXPECT_EQ(callsOf(calls), "B");
    EXPECT_EQ(callsOf(calls, ZelEvent_CreateModel), "");
    a.setEventHandler(kType, nullptr, 0);
    EXPECT_EQ(callsOf(calls), "B");
}

TEST(EventOrder, CopiesOfAListenerHaveNoRegistrations) {
    std::string calls;
    Probe a('A', calls), b('B', calls);
    a.listen();
    b.listen();
    {
        const auto copy = std::make_unique<Probe>(a);
        EXPECT_EQ(callsOf(calls), "BA");
    }
    static_cast<ZelEventListener&>(a) = b;
    EXPECT_EQ(callsOf(calls), "BA");
}

// Four probes of priority 4 to 1 (A first); what B does on its first call.
struct World {
    World() {
        for (char letter = 'A'; letter <= 'E'; ++letter) add(letter);
        for (int i = 0; i < 4; ++i) probes[static_cast<std::size_t>(i)]->listen(4 - i);
    }
    Probe& add(char letter) {
        probes.push_back(std::make_unique<Probe>(letter, calls));
        return *probes.back();
    }
    Probe& get(char letter) { return *probes[static_cast<std::size_t>(letter - 'A')]; }
    void destroy(char letter) { probes[static_cast<std::size_t>(letter - 'A')].reset(); }
    void trigger() {
        calls += '(';
        TestEvent().trigger();
        calls += ')';
    }

    std::string calls;
    std::vector<std::unique_ptr<Probe>> probes;  // E is not registered at first
};

struct ReentryCase {
    const char* why;
    std::function<void(World&)> action;
    const char* first;
    const char* second;
};

const ReentryCase kReentries[] = {
    {"nothing", [](World&) {}, "ABCD", "ABCD"},
    {"destroys a later listener", [](World& w) { w.destroy('C'); }, "ABD", "ABD"},
    {"destroys an earlier listener", [](World& w) { w.destroy('A'); }, "ABCD", "BCD"},
    {"destroys itself", [](World& w) { w.destroy('B'); }, "ABCD", "ACD"},
    {"signs itself off", [](World& w) { w.get('B').manualSignOff(); }, "ABCD", "ACD"},
    {"signs off a listener with further entries",
     [](World& w) { w.get('A').listen(0).manualSignOff(); }, "ABCD", "BCD"},
    {"destroys all others",
     [](World& w) {
         for (const char letter : {'A', 'C', 'D'}) w.destroy(letter);
     },
     "AB", "B"},
    {"registers a later handler", [](World& w) { w.get('E').listen(0); }, "ABCD", "ABCDE"},
    {"registers an earlier handler", [](World& w) { w.get('E').listen(9); }, "ABCD", "EABCD"},
    {"registers a handler in its own place", [](World& w) { w.get('E').listen(3); }, "ABCD",
     "AEBCD"},
    {"registers so many that the entries move in memory",
     [](World& w) {
         for (int i = 0; i < 100; ++i) w.get('E').listen(i % 2 == 0 ? 9 : 0);
         w.get('E').manualSignOff();
     },
     "ABCD", "ABCD"},
    {"signs off and registers again",
     [](World& w) {
         w.get('C').manualSignOff();
         w.get('C').listen(0);
     },
     "ABD", "ABDC"},
    {"triggers inside", [](World& w) { w.trigger(); }, "AB(ABCD)CD", "ABCD"},
    {"registers, and the trigger inside is the next one",
     [](World& w) {
         w.get('E').listen(9);
         w.trigger();
     },
     "AB(EABCD)CD", "EABCD"},
    {"triggers inside, where a later listener is destroyed",
     [](World& w) {
         w.get('A').action = [&w](ZelEvent&) { w.destroy('C'); };
         w.trigger();
         w.get('A').action = nullptr;
     },
     "AB(ABD)D", "ABD"},
    {"destroys a later listener, then triggers inside",
     [](World& w) {
         w.destroy('C');
         w.trigger();
     },
     "AB(ABD)D", "ABD"},
    {"destroys after a trigger inside has ended",
     [](World& w) {
         w.trigger();
         w.destroy('C');
         w.destroy('B');
     },
     "AB(ABCD)D", "AD"},
    {"triggers inside, where handlers come before and behind",
     [](World& w) {
         w.get('C').action = [&w](ZelEvent&) {
             w.get('C').action = nullptr;
             w.get('E').listen(9).listen(0);
         };
         w.trigger();
     },
     "AB(ABCD)CD", "EABCDE"},
};

TEST(EventReentry, ReachesNoListenerThatIsGoneAndNoHandlerTooEarly) {
    for (const auto& [why, action, first, second] : kReentries) {
        SCOPED_TRACE(why);
        World world;
        bool isDone = false;
        world.get('B').action = [&, &act = action](ZelEvent&) {
            if (std::exchange(isDone, true)) return;
            act(world);
        };
        EXPECT_EQ(callsOf(world.calls), first);
        EXPECT_EQ(callsOf(world.calls), second);
    }
}

TEST(EventReentry, SurvivesAHandlerThatThrows) {
    std::string calls;
    Probe a('A', calls), c('C', calls);
    auto b = std::make_unique<Probe>('B', calls);
    c.listen();
    b->listen();
    a.listen();
    b->action = [&](ZelEvent&) {
        b.reset();
        throw std::runtime_error("a handler's own affair");
    };
    EXPECT_THROW(TestEvent().trigger(), std::runtime_error);
    EXPECT_EQ(calls, "AB");
    EXPECT_EQ(callsOf(calls), "AC");
}

TEST(EventReentry, KeepsOtherTypesApart) {
    std::string calls;
    Probe a('A', calls), b('B', calls);
    a.listen().listen(0, ZelEvent_CreateModel);
    b.listen(1).listen(0, ZelEvent_CreateModel);
    b.action = [&](ZelEvent& event) {
        if (event.getEventType() == kType) TestEvent(ZelEvent_CreateModel).trigger();
        a.manualSignOff();
    };
    EXPECT_EQ(callsOf(calls), "BB");
}

TEST(EventResult, IsWhatTheLastHandlerSets) {
    std::string calls;
    Probe a('A', calls), b('B', calls);
    TestEvent nobody;
    nobody.trigger();
    EXPECT_EQ(nobody.getResultValue(), 0);
    a.action = [](ZelEvent& event) { event.setResultValue(event.getResultValue() + 1); };
    b.action = [](ZelEvent& event) { event.setResultValue(40); };
    a.listen();
    b.listen();
    TestEvent event;
    event.trigger();
    EXPECT_EQ(event.getResultValue(), 41);
}

TEST(EventFocus, IsMovedUnlessAHandlerObjects) {
    SV::Application application;
    SV::MDIFrame frame("events");
    ASSERT_TRUE(frame.GetHandle()) << "needs a display";
    frame.Show();
    ::SetFocus(nullptr);
    std::string calls;
    Probe objector('A', calls);
    objector.action = [](ZelEvent& event) { event.setResultValue(1); };
    objector.listen(0, ZelEvent_BeforeGrabFocus);
    EXPECT_FALSE(ZelBeforeGrabFocusEvent::GrabFocus(&frame));
    EXPECT_EQ(::GetFocus(), nullptr);
    EXPECT_EQ(calls, "A");
    objector.action = nullptr;
    EXPECT_TRUE(ZelBeforeGrabFocusEvent::GrabFocus(&frame));
    EXPECT_EQ(::GetFocus(), frame.GetClient());  // a frame hands it on
    EXPECT_FALSE(ZelBeforeGrabFocusEvent::GrabFocus(nullptr));
}

TEST(EventNames, AreThoseThatProgramsHaveCompiledIn) {
    std::ifstream file(ZBASIC_FIXTURES "/event_names.txt");
    std::string comment;
    std::getline(file, comment);
    int type = 0;
    std::string name;
    int expected = 700;
    for (; file >> type >> name; ++expected) {
        SCOPED_TRACE(name);
        ASSERT_EQ(type, expected);
        EXPECT_EQ(Zel_GetEventNames()[type - 700], name);
        EXPECT_EQ(TestEvent(static_cast<ZelEventType>(type)).getEventName(), name);
        const bool isBound = name.starts_with("__");
        EXPECT_EQ(Zel_GetEventTypeOfName(name.c_str()), isBound ? ZelEvent_Last : type);
        EXPECT_EQ(Zel_GetEventIndexOfName(name.c_str()),
                  isBound ? 0u : static_cast<unsigned long>(type - 700));
    }
    EXPECT_EQ(expected, 856);
    EXPECT_EQ(Zel_GetEventCount(), 156u);
}

TEST(EventNames, AreFoundOnlyAsTheyAreSpelled) {
    for (const char* name :
         {static_cast<const char*>(nullptr), "", "appexit", "AppExit ", "AppExi", "NoSuchEvent"}) {
        SCOPED_TRACE(name ? name : "null");
        EXPECT_EQ(Zel_GetEventTypeOfName(name), 855);
        EXPECT_EQ(Zel_GetEventIndexOfName(name), 0u);
    }
    EXPECT_EQ(ZelEvent_AppExit, 776);
    EXPECT_EQ(ZelEvent_BeforeEndComparison, 854);
    EXPECT_STREQ(TestEvent(kUnlisted).getEventName(), "");
}

TEST(EventNames, FollowWhatACallerWritesIntoTheTable) {
    const char*& entry = Zel_GetEventNames()[1];
    const char* const original = entry;
    entry = "Customer";
    EXPECT_EQ(Zel_GetEventTypeOfName("Customer"), ZelEvent_User);
    EXPECT_EQ(Zel_GetEventTypeOfName("User"), ZelEvent_Last);
    entry = nullptr;
    EXPECT_EQ(Zel_GetEventTypeOfName("UserGroup"), ZelEvent_UserGroup);
    entry = original;
}

TEST(EventClasses, CarryWhatTheyWereMadeWith) {
    const ZelUserEvent user(ZelUserEvent::AfterSetPassword, 7);
    EXPECT_EQ(user.getEventType(), 701);
    EXPECT_EQ(user.GetActionType(), 21);
    EXPECT_EQ(user.GetActionName(), "AfterSetPassword");
    EXPECT_EQ(user.GetID(), 7);
    EXPECT_EQ(user.GetPermissionType(), -1);
    EXPECT_EQ(user.GetDBPermission(), 0);
    const ZelUserEvent permission(ZelUserEvent::BeforeSetPermission, 1, 2, ZelDBPermission{3});
    EXPECT_EQ(permission.GetActionName(), "BeforeSetPermission");
    EXPECT_EQ(permission.GetPermissionType(), 2);
    EXPECT_EQ(permission.GetDBPermission(), 3);

    const ZelUserGroupEvent group(ZelUserGroupEvent::AfterRename, 5);
    EXPECT_EQ(group.getEventType(), 702);
    EXPECT_EQ(group.GetUserGroupID(), 5);
    EXPECT_EQ(group.GetActionType(), 8);
    EXPECT_EQ(group.GetActionName(), "AfterRename");
    EXPECT_EQ(group.GetUserID(), -1);
    const ZelUserGroupEvent member(ZelUserGroupEvent::AfterAddUser, 5, 6);
    EXPECT_EQ(member.GetUserGroupID(), 5);
    EXPECT_EQ(member.GetUserID(), 6);
    EXPECT_EQ(ZelUserGroupEvent(static_cast<ZelUserGroupEvent::ActionType>(-1), 5).GetActionName(),
              "");

    EXPECT_EQ(ZelExitAppEvent("end(0)").getEventType(), 776);
    EXPECT_EQ(ZelExitAppEvent("end(0)").GetReason(), "end(0)");
    const ZelAppChangeStartupPhaseEvent phase("libraries\n");
    EXPECT_EQ(phase.getEventType(), 841);
    EXPECT_EQ(phase.GetText(), "libraries\n");
    const ZelSystemSettingsChangedEvent settings(static_cast<SV::SysChangeType>(4));
    EXPECT_EQ(settings.getEventType(), 850);
    EXPECT_EQ(static_cast<int>(settings.GetChangeType()), 4);
    const ZelWindowStackChangedEvent pushed(3, true, "Model");
    EXPECT_EQ(pushed.getEventType(), 849);
    EXPECT_EQ(pushed.GetNumber(), 3);
    EXPECT_TRUE(pushed.IsAdded());
    EXPECT_EQ(pushed.GetText(), "Model");
    EXPECT_FALSE(ZelWindowStackChangedEvent(3, false, "Model").IsAdded());
    EXPECT_EQ(ZelBeforeGrabFocusEvent().getEventType(), 851);
}

// The numbers are compiled into programs.
static_assert(ZelUserEvent::BeforeDelete == 5 && ZelUserEvent::AfterUnsetPermission == 10);
static_assert(ZelUserEvent::AfterRename == 14 && ZelUserEvent::AfterUnsetSubAdminUserMgt == 18);
static_assert(ZelUserGroupEvent::AfterAddUser == 4 && ZelUserGroupEvent::BeforeRename == 7);

const char* const kUserActions[] = {
    "AfterCreate",
    "BeforeSemiDelete",
    "AfterSemiDelete",
    "BeforeWakeUp",
    "AfterWakeUp",
    "BeforeDelete",
    "AfterDelete",
    "BeforeSetPermission",
    "AfterSetPermission",
    "BeforeUnsetPermission",
    "AfterUnsetPermission",
    "BeforeSetComment",
    "AfterSetComment",
    "BeforeRename",
    "AfterRename",
    "AfterSetSubAdmin",
    "AfterUnsetSubAdmin",
    "AfterSetSubAdminUserMgt",
    "AfterUnsetSubAdminUserMgt",
    "BeforeSetComponents",
    "AfterSetComponents",
    "AfterSetPassword",
};

const char* const kUserGroupActions[] = {
    "AfterCreate",      "BeforeDelete",    "AfterDelete",  "BeforeAddUser", "AfterAddUser",
    "BeforeRemoveUser", "AfterRemoveUser", "BeforeRename", "AfterRename",
};

template <typename Event, std::size_t count>
void expectActionNames(const char* const (&names)[count]) {
    for (std::size_t i = 0; i < count; ++i) {
        const auto action = static_cast<typename Event::ActionType>(i);
        EXPECT_EQ(Event(action, 1).GetActionName(), names[i]) << i;
    }
    EXPECT_EQ(Event(static_cast<typename Event::ActionType>(count), 1).GetActionName(), "");
}

TEST(EventClasses, NameTheirActions) {
    expectActionNames<ZelUserEvent>(kUserActions);
    expectActionNames<ZelUserGroupEvent>(kUserGroupActions);
}

// Destroyed after everything static of the library, by the way the run time works:
// objects of the main thread go last.
class LateListener : public ZelEventListener {
public:
    ~LateListener() override {
        TestEvent().trigger();
        setEventHandler(kType, static_cast<Handler>(&LateListener::onEvent), 0);
        TestEvent().trigger();
        manualSignOff();
        ::_write(1, "late\n", 5);
    }
    void listen() { setEventHandler(kType, static_cast<Handler>(&LateListener::onEvent), 0); }
    void onEvent(ZelEvent*) { ::_write(1, "called\n", 7); }
};

CHILD_MAIN(eventsAfterShutDown) {
    static thread_local LateListener listener;
    listener.listen();
    TestEvent().trigger();
    return 0;
}

TEST(EventExit, TriggersAreIgnoredAndListenersMayGoLater) {
    const ChildResult result = runChild("eventsAfterShutDown");
    EXPECT_EQ(result.exitCode, 0u);
    EXPECT_EQ(result.out, "called\nlate\n");
}
