#include "model/node_index.h"

#include <bit>
#include <limits>

namespace zelhost {

namespace {

constexpr std::uint32_t kFree = std::numeric_limits<std::uint32_t>::max();

std::uint64_t distance(std::int64_t from, std::int64_t to) {
    return static_cast<std::uint64_t>(to) - static_cast<std::uint64_t>(from);
}

std::uint64_t hashOf(std::int64_t id) {
    std::uint64_t hash = static_cast<std::uint64_t>(id);  // the finaliser of MurmurHash3
    hash = (hash ^ (hash >> 33)) * 0xFF51AFD7ED558CCDu;
    hash = (hash ^ (hash >> 33)) * 0xC4CEB9FE1A85EC53u;
    return hash ^ (hash >> 33);
}

}  // namespace

std::size_t NodeIndex::slotOf(std::int64_t id) const {
    const std::size_t mask = m_slots.size() - 1;
    std::size_t slot = hashOf(id) & mask;
    while (m_slots[slot] != kFree && m_nodes[m_slots[slot]].id != id) slot = (slot + 1) & mask;
    return slot;
}

// With room for as many nodes again, without the last one.
void NodeIndex::rebuild() {
    m_slots.assign(std::bit_ceil(4 * m_nodes.size()), kFree);
    for (std::uint32_t i = 0; i + 1 < m_nodes.size(); ++i) m_slots[slotOf(m_nodes[i].id)] = i;
}

bool NodeIndex::addLast() {
    const std::size_t last = m_nodes.size() - 1;
    const std::int64_t id = m_nodes[last].id;
    if (m_slots.empty() && distance(m_nodes[0].id, id) == last) return true;
    if (2 * m_nodes.size() > m_slots.size()) rebuild();
    const std::size_t slot = slotOf(id);
    if (m_slots[slot] != kFree) return false;
    m_slots[slot] = static_cast<std::uint32_t>(last);
    return true;
}

std::optional<std::uint32_t> NodeIndex::find(std::int64_t id) const {
    if (m_nodes.empty()) return std::nullopt;
    if (m_slots.empty()) {
        const std::uint64_t place = distance(m_nodes[0].id, id);
        if (place >= m_nodes.size()) return std::nullopt;
        return static_cast<std::uint32_t>(place);
    }
    const std::uint32_t found = m_slots[slotOf(id)];
    return found == kFree ? std::nullopt : std::optional(found);
}

}  // namespace zelhost
