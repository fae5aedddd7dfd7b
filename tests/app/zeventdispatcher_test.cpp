#include "app/zeventdispatcher.h"

#include <gtest/gtest.h>

#include <functional>
#include <stdexcept>
#include <utility>
#include <vector>

namespace {

class TestEvent : public ZelEvent {
public:
    TestEvent() : ZelEvent(ZelEvent_SaveModel) {}
};

class Worker : public ZelEventListener {
public:
    void onEvent(ZelEvent*) {
        const std::function<void()> now = std::exchange(work, nullptr);
        if (now) now();
    }

    std::function<void()> work;  // of the next call only
};

constexpr auto kOnEvent = static_cast<ZelEventListener::Handler>(&Worker::onEvent);

// One that acts and one that is removed, and how many entries were counted on the way.
struct World {
    World() {
        sequence.add(&removed, kOnEvent, 0);
        sequence.add(&actor, kOnEvent, 1);
    }
    void remove() { sequence.remove(&removed); }
    void count() { counts.push_back(sequence.size()); }
    void dispatch() {
        TestEvent event;
        sequence.dispatch(event);
    }
    void dispatchWith(const std::function<void()>& work) {
        actor.work = work;
        dispatch();
    }

    ZelEventActionSeq sequence;
    Worker actor, removed;
    std::vector<std::size_t> counts;
};

struct PurgeCase {
    const char* why;
    std::function<void(World&)> action;
    std::vector<std::size_t> counts;
};

const PurgeCase kPurges[] = {
    {"at once when nothing is dispatched",
     [](World& w) {
         w.remove();
         w.count();
     },
     {1}},
    {"at the end of the dispatch",
     [](World& w) {
         w.dispatchWith([&w] {
             w.remove();
             w.count();
         });
         w.count();
     },
     {2, 1}},
    {"not by a dispatch inside it",
     [](World& w) {
         w.dispatchWith([&w] {
             w.remove();
             w.dispatch();
             w.count();
         });
         w.count();
     },
     {2, 1}},
    {"at the end of one that a handler ends by throwing",
     [](World& w) {
         const auto removeAndThrow = [&w] {
             w.remove();
             throw std::runtime_error("a handler's own affair");
         };
         EXPECT_THROW(w.dispatchWith(removeAndThrow), std::runtime_error);
         w.count();
     },
     {1}},
    {"at once after one that threw",
     [](World& w) {
         const auto justThrow = [] { throw std::runtime_error("a handler's own affair"); };
         EXPECT_THROW(w.dispatchWith(justThrow), std::runtime_error);
         w.remove();
         w.count();
     },
     {1}},
    {"leaving no mark that would erase the next one too early",
     [](World& w) {
         w.dispatchWith([&w] { w.remove(); });
         w.sequence.add(&w.removed, kOnEvent, 0);
         w.dispatchWith([&w] { w.count(); });
         w.count();
     },
     {2, 2}},
};

}  // namespace

TEST(EventSequence, ErasesAListenerOnceNoDispatchRuns) {
    for (const auto& [why, action, counts] : kPurges) {
        SCOPED_TRACE(why);
        World world;
        action(world);
        EXPECT_EQ(world.counts, counts);
    }
}
