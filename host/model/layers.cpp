#include "model/layers.h"

#include <algorithm>
#include <numeric>

namespace zelhost {

Neighbours::Neighbours(std::size_t nodes, std::span<const Link> links, Side side)
    : m_first(nodes + 1) {
    const bool countsTo = side != Side::from;
    const bool countsFrom = side != Side::to;
    for (const auto& [from, to] : links) {
        if (from == to) continue;
        if (countsTo) ++m_first[from + 1];
        if (countsFrom) ++m_first[to + 1];
    }
    std::partial_sum(m_first.begin(), m_first.end(), m_first.begin());
    m_all.resize(m_first.back());
    std::vector<std::uint32_t> next(m_first.begin(), m_first.end() - 1);
    for (const auto& [from, to] : links) {
        if (from == to) continue;
        if (countsTo) m_all[next[from]++] = to;
        if (countsFrom) m_all[next[to]++] = from;
    }
}

std::vector<Group> connectedParts(std::size_t nodes, std::span<const Link> links) {
    const Neighbours neighbours(nodes, links, Neighbours::Side::both);
    std::vector<bool> isSeen(nodes);
    std::vector<Group> parts;
    for (std::uint32_t start = 0; start < nodes; ++start) {
        if (isSeen[start]) continue;
        isSeen[start] = true;
        Group& part = parts.emplace_back(Group{start});
        for (std::size_t i = 0; i < part.size(); ++i) {
            for (const std::uint32_t other : neighbours.of(part[i])) {
                if (isSeen[other]) continue;
                isSeen[other] = true;
                part.push_back(other);
            }
        }
    }
    return parts;
}

namespace {

// When a depth-first walk leaves each node for good.
std::vector<std::uint32_t> leavingOrder(std::size_t nodes, std::span<const Link> links) {
    const Neighbours next(nodes, links, Neighbours::Side::to);
    std::vector<bool> isSeen(nodes);
    std::vector<std::uint32_t> place(nodes);  // of the next neighbour to walk to
    std::vector<std::uint32_t> order(nodes);
    std::vector<std::uint32_t> path;
    std::uint32_t leftCount = 0;
    for (std::uint32_t start = 0; start < nodes; ++start) {
        if (!isSeen[start]) path.push_back(start);
        while (!path.empty()) {
            const std::uint32_t node = path.back();
            isSeen[node] = true;
            if (place[node] == next.of(node).size()) {
                order[node] = leftCount++;
                path.pop_back();
                continue;
            }
            const std::uint32_t other = next.of(node)[place[node]++];
            if (!isSeen[other]) path.push_back(other);
        }
    }
    return order;
}

// Nodes without predecessor go directly above the first of their successors.
void pullDownSources(const Neighbours& before, const Neighbours& behind,
                     std::vector<std::uint32_t>& layers) {
    for (std::uint32_t node = 0; node < layers.size(); ++node) {
        const std::span<const std::uint32_t> successors = behind.of(node);
        if (!before.of(node).empty() || successors.empty()) continue;
        std::uint32_t first = layers[successors[0]];
        for (const std::uint32_t other : successors) first = std::min(first, layers[other]);
        layers[node] = first - 1;
    }
}

}  // namespace

// What leads to a node that the walk leaves later leads back to one it has not left yet.
std::vector<Link> linksDown(std::size_t nodes, std::span<const Link> links) {
    const std::vector<std::uint32_t> order = leavingOrder(nodes, links);
    std::vector<Link> result(links.begin(), links.end());
    for (Link& link : result) {
        if (order[link.from] < order[link.to]) std::swap(link.from, link.to);
    }
    return result;
}

// The longest way from a node without predecessor.
std::vector<std::uint32_t> layersOf(std::size_t nodes, std::span<const Link> links) {
    const Neighbours before(nodes, links, Neighbours::Side::from);
    const Neighbours behind(nodes, links, Neighbours::Side::to);
    std::vector<std::size_t> waiting(nodes);  // predecessors without a layer
    std::vector<std::uint32_t> layers(nodes);
    std::vector<std::uint32_t> ready;
    for (std::uint32_t i = 0; i < nodes; ++i) {
        waiting[i] = before.of(i).size();
        if (waiting[i] == 0) ready.push_back(i);
    }
    for (std::size_t i = 0; i < ready.size(); ++i) {
        for (const std::uint32_t other : behind.of(ready[i])) {
            layers[other] = std::max(layers[other], layers[ready[i]] + 1);
            if (--waiting[other] == 0) ready.push_back(other);
        }
    }
    pullDownSources(before, behind, layers);
    return layers;
}

}  // namespace zelhost
