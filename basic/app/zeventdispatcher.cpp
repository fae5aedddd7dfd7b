#include "app/zeventdispatcher.h"

#include <algorithm>
#include <atomic>
#include <bit>

namespace {

// Both outlive the dispatcher: objects of threads, and of libraries that are detached later, are
// destroyed after it.
constinit std::atomic<ZelEventDispatcher*> g_dispatcher = nullptr;
constinit std::atomic<bool> g_isShutDown = false;

// The position of a type among the listed ones; beyond their number for any other.
std::size_t indexOf(ZelEventType type) {
    return static_cast<std::uint32_t>(type) - static_cast<std::uint32_t>(ZelEvent_First);
}

}  // namespace

// Ends with the handlers or by what one of them throws.
class ZelEventActionSeq::Dispatching {
public:
    explicit Dispatching(ZelEventActionSeq& sequence) : m_sequence(sequence) {
        ++m_sequence.m_depth;
    }
    Dispatching(const Dispatching&) = delete;
    Dispatching& operator=(const Dispatching&) = delete;
    ~Dispatching() {
        if (--m_sequence.m_depth == 0 && m_sequence.m_hasRemoved) m_sequence.purge();
    }

private:
    ZelEventActionSeq& m_sequence;
};

inline void ZelEventActionSeq::Entry::call(ZelEvent& event) const {
    if (code) {
        code(object, &event);
    } else if (listener) {
        (listener->*handler)(&event);
    }
}

// Half of a call through a member pointer goes into finding out what it points to. Where that
// is no virtual function it is found out once, here.
ZelEventActionSeq::Entry ZelEventActionSeq::entryOf(ZelEventListener* listener,
                                                    ZelEventListener::Handler handler) {
    Entry entry = {nullptr, listener, listener, handler, 0, 0};
#if defined(__GNUC__) && defined(__x86_64__)
    // Itanium C++ ABI, 2.3: the address of the code, or an odd number for a virtual function; and
    // how far the object lies behind the one that is pointed to.
    struct MemberPointer {
        std::uintptr_t code;
        std::ptrdiff_t distance;
    };
    const auto parts = std::bit_cast<MemberPointer>(handler);
    if (parts.code % 2 == 0) {
        entry.code = reinterpret_cast<Code>(parts.code);
        entry.object = reinterpret_cast<char*>(listener) + parts.distance;
    }
#endif
    return entry;
}

void ZelEventActionSeq::add(ZelEventListener* listener, ZelEventListener::Handler handler,
                            ZelEventPriority priority) {
    // Relied on by callers: the newest of equal priority comes first.
    const auto place = std::ranges::find_if(
        m_entries, [priority](const Entry& entry) { return entry.priority <= priority; });
    Entry entry = entryOf(listener, handler);
    entry.registered = m_changes++;
    entry.priority = priority;
    m_entries.insert(place, entry);
}

void ZelEventActionSeq::remove(const ZelEventListener* listener) {
    if (m_depth == 0) {
        std::erase_if(m_entries,
                      [listener](const Entry& entry) { return entry.listener == listener; });
        return;
    }
    for (Entry& entry : m_entries) {
        if (entry.listener != listener) continue;
        entry.code = nullptr;
        entry.listener = nullptr;
    }
    m_hasRemoved = true;
    ++m_changes;
}

void ZelEventActionSeq::dispatch(ZelEvent& event) {
    const Dispatching dispatching(*this);
    const Change start = m_changes;
    std::size_t done = 0;
    if (!m_hasRemoved) {
        // Nearly always nothing changes, and then this is a loop over live entries.
        const Entry* const first = m_entries.data();
        const Entry* const end = first + m_entries.size();
        const Entry* entry = first;
        for (; entry != end; ++entry) {
            entry->call(event);
            if (m_changes != start) break;
        }
        if (entry == end) return;
        done = static_cast<std::size_t>(entry - first) + 1;
    }
    dispatchRest(event, start, done);
}

void ZelEventActionSeq::dispatchRest(ZelEvent& event, Change start, std::size_t done) {
    while (const Entry* entry = findOlder(start, done++)) {
        entry->call(event);
    }
}

const ZelEventActionSeq::Entry* ZelEventActionSeq::findOlder(Change start,
                                                             std::size_t ordinal) const {
    for (const Entry& entry : m_entries) {
        if (entry.registered < start && ordinal-- == 0) return &entry;
    }
    return nullptr;
}

void ZelEventActionSeq::purge() {
    std::erase_if(m_entries, [](const Entry& entry) { return !entry.listener; });
    m_hasRemoved = false;
}

ZelEventDispatcher* ZelEventDispatcher::instance() {
    if (g_isShutDown) return nullptr;
    static ZelEventDispatcher dispatcher;
    return &dispatcher;
}

ZelEventDispatcher* ZelEventDispatcher::current() {
    return g_dispatcher.load(std::memory_order_acquire);
}

ZelEventDispatcher::ZelEventDispatcher() { g_dispatcher = this; }

ZelEventDispatcher::~ZelEventDispatcher() {
    g_isShutDown = true;
    g_dispatcher = nullptr;
}

void ZelEventDispatcher::add(ZelEventType type, ZelEventListener* listener,
                             ZelEventListener::Handler handler, ZelEventPriority priority) {
    ZelEventActionSeq& sequence = sequenceOf(type);
    std::vector<ZelEventActionSeq*>& memberships = m_memberships[listener];
    if (std::ranges::find(memberships, &sequence) == memberships.end()) {
        memberships.push_back(&sequence);
    }
    sequence.add(listener, handler, priority);
}

void ZelEventDispatcher::remove(const ZelEventListener* listener) {
    const auto found = m_memberships.find(listener);
    if (found == m_memberships.end()) return;
    for (ZelEventActionSeq* sequence : found->second) sequence->remove(listener);
    m_memberships.erase(found);
}

void ZelEventDispatcher::dispatch(ZelEvent& event) {
    ZelEventDispatcher* const dispatcher = current();
    if (!dispatcher) return;
    const std::size_t index = indexOf(event.getEventType());
    if (index < kListed) {
        dispatcher->m_listed[index].dispatch(event);
        return;
    }
    const auto other = dispatcher->m_others.find(event.getEventType());
    if (other != dispatcher->m_others.end()) other->second.dispatch(event);
}

ZelEventActionSeq& ZelEventDispatcher::sequenceOf(ZelEventType type) {
    const std::size_t index = indexOf(type);
    return index < kListed ? m_listed[index] : m_others[type];
}
