#include "model/skeleton.h"

#include <algorithm>

namespace zelhost {

namespace {

constexpr std::uint64_t kMostBends = 100'000;  // of all links

// How many layers a link may go down and still be led past boxes.
std::uint32_t longestSpan(std::vector<std::uint32_t> spans) {
    std::ranges::sort(spans);
    std::uint64_t bends = 0;
    for (const std::uint32_t span : spans) {
        bends += std::max(span, 1u) - 1;
        if (bends > kMostBends) return span - 1;
    }
    return spans.empty() ? 0 : spans.back();
}

}  // namespace

Skeleton::Skeleton(std::size_t nodeCount, std::span<const Link> originalLinks)
    : nodes(nodeCount),
      links(linksDown(nodeCount, originalLinks)),
      layers(layersOf(nodeCount, links)) {
    std::vector<std::uint32_t> spans;
    spans.reserve(links.size());
    for (const auto& [from, to] : links) spans.push_back(layers[to] - layers[from]);
    const std::uint32_t longest = longestSpan(spans);
    firstBend.reserve(links.size() + 1);
    for (std::size_t i = 0; i < links.size(); ++i) {
        firstBend.push_back(static_cast<std::uint32_t>(layers.size()));
        std::uint32_t last = links[i].from;
        for (std::uint32_t k = 1; k < spans[i] && spans[i] <= longest; ++k) {
            const auto bend = static_cast<std::uint32_t>(layers.size());
            layers.push_back(layers[links[i].from] + k);
            steps.push_back({last, bend});
            last = bend;
        }
        steps.push_back({last, links[i].to});
    }
    firstBend.push_back(static_cast<std::uint32_t>(layers.size()));
}

}  // namespace zelhost
