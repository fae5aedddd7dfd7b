// The layers of a graph, of which only the numbers of its nodes count here.

#pragma once

#include <cstdint>
#include <span>
#include <vector>

namespace zelhost {

struct Link {
    std::uint32_t from;
    std::uint32_t to;
};

// The neighbours of every node in one array. A loop makes no neighbour.
class Neighbours {
public:
    enum class Side { from, to, both };

    Neighbours(std::size_t nodes, std::span<const Link> links, Side side);

    std::span<const std::uint32_t> of(std::uint32_t node) const {
        return std::span(m_all).subspan(m_first[node], m_first[node + 1] - m_first[node]);
    }

private:
    std::vector<std::uint32_t> m_first;
    std::vector<std::uint32_t> m_all;
};

using Group = std::vector<std::uint32_t>;

std::vector<Group> connectedParts(std::size_t nodes, std::span<const Link> links);

// The same links, every one turned round that would close a circle (loops stay).
std::vector<Link> linksDown(std::size_t nodes, std::span<const Link> links);

// The layer of each node, from 0; `links` (of `linksDown`) lead to higher ones.
std::vector<std::uint32_t> layersOf(std::size_t nodes, std::span<const Link> links);

}  // namespace zelhost
