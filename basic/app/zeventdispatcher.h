// Who is told of which event.

#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <map>
#include <unordered_map>
#include <vector>

#include "zbasic/zevent.h"

// The handlers of one event type, in the order in which they are called.
//
// While they are being called (also by a trigger inside a handler), entries of a
// listener that goes only lose their listener; the outermost dispatch purges them.
class ZelEventActionSeq {
public:
    void add(ZelEventListener* listener, ZelEventListener::Handler handler,
             ZelEventPriority priority);
    void remove(const ZelEventListener* listener);
    void dispatch(ZelEvent& event);

    std::size_t size() const { return m_entries.size(); }  // with what waits for the purge

private:
    using Change = std::uint64_t;  // counts registrations, and removals during a dispatch

    // A handler's code, called as a function whose first argument is the object.
    using Code = void (*)(void* object, ZelEvent* event);

    struct Entry {
        Code code;  // null: removed, or known only when it is called
        void* object;
        ZelEventListener* listener;  // null: removed
        ZelEventListener::Handler handler;
        Change registered;
        ZelEventPriority priority;

        void call(ZelEvent& event) const;
    };

    class Dispatching;

    static Entry entryOf(ZelEventListener* listener, ZelEventListener::Handler handler);

    // The entries from before `start`, less the first `done` of them: insertions and
    // marks leave their order, so counting finds the place again.
    void dispatchRest(ZelEvent& event, Change start, std::size_t done);
    const Entry* findOlder(Change start, std::size_t ordinal) const;
    void purge();

    std::vector<Entry> m_entries;
    Change m_changes = 0;
    int m_depth = 0;  // of dispatches
    bool m_hasRemoved = false;
};

// All sequences of the process.
class ZelEventDispatcher {
public:
    // Made on first use; null once it has been destroyed at process exit.
    static ZelEventDispatcher* instance();
    // As it is: null when nothing was ever registered, too.
    static ZelEventDispatcher* current();

    ZelEventDispatcher(const ZelEventDispatcher&) = delete;
    ZelEventDispatcher& operator=(const ZelEventDispatcher&) = delete;
    ~ZelEventDispatcher();

    void add(ZelEventType type, ZelEventListener* listener, ZelEventListener::Handler handler,
             ZelEventPriority priority);
    void remove(const ZelEventListener* listener);
    // By the dispatcher that there is, if there is one.
    static void dispatch(ZelEvent& event);

private:
    static constexpr std::size_t kListed = ZelEvent_Last - ZelEvent_First + 1;

    ZelEventDispatcher();
    ZelEventActionSeq& sequenceOf(ZelEventType type);

    std::array<ZelEventActionSeq, kListed> m_listed;
    std::map<std::int32_t, ZelEventActionSeq> m_others;
    // Where a listener has entries, so that its end need not look everywhere.
    std::unordered_map<const ZelEventListener*, std::vector<ZelEventActionSeq*>> m_memberships;
};
