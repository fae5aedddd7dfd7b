// What a layered layout places.

#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "model/layers.h"

namespace zelhost {

// Nodes and bends: a link that goes down several layers gets a bend in each layer between, which
// takes its place there as nodes do. Bends have the numbers behind the nodes, those of one link
// one after the other.
struct Skeleton {
    Skeleton(std::size_t nodeCount, std::span<const Link> originalLinks);

    bool isBend(std::uint32_t item) const { return item >= nodes; }
    bool isStraight(std::size_t link) const {
        return layers[links[link].to] - layers[links[link].from] != bendCount(link) + 1;
    }
    std::uint32_t bendCount(std::size_t link) const {
        return firstBend[link + 1] - firstBend[link];
    }

    std::size_t nodes;
    std::vector<Link> links;               // one an original link, leading down
    std::vector<std::uint32_t> layers;     // of each item
    std::vector<std::uint32_t> firstBend;  // of each link, and the end of all
    std::vector<Link> steps;               // the links from bend to bend
};

}  // namespace zelhost
