// From the ids of nodes to their places.

#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "model/graph.h"

namespace zelhost {

// Finds nodes by id. Ids that count up by one, as most programs write them, cost
// nothing; the first other one builds a hash table.
class NodeIndex {
public:
    explicit NodeIndex(const std::vector<Node>& nodes) : m_nodes(nodes) {}

    // Call behind each `push_back`. False when a node before has that id.
    bool addLast();
    std::optional<std::uint32_t> find(std::int64_t id) const;

private:
    std::size_t slotOf(std::int64_t id) const;
    void rebuild();

    const std::vector<Node>& m_nodes;
    std::vector<std::uint32_t> m_slots;  // open addressing; empty: ids count up
};

}  // namespace zelhost
