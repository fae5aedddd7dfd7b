// Figures of whatever a host hands over as a graph.

#include <numeric>
#include <set>

#include "figures/graph_figures.h"
#include "input.h"

namespace {

void checkPath(const figures::Graph& graph, const std::vector<std::size_t>& path) {
    check(std::set<std::size_t>(path.begin(), path.end()).size() == path.size());
    for (std::size_t i = 1; i < path.size(); ++i) {
        check(std::ranges::any_of(graph.edges, [&](const figures::Edge& edge) {
            const bool isForward = edge.source == path[i - 1] && edge.target == path[i];
            const bool isBackward = edge.target == path[i - 1] && edge.source == path[i];
            return isForward || (isBackward && !graph.isDirected);
        }));
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const figures::Graph graph = figures::readGraph({reinterpret_cast<const char*>(data), size});
    const std::size_t nodes = graph.ids.size();
    for (const auto& [source, target] : graph.edges) check(source < nodes && target < nodes);
    const std::size_t components = figures::countComponents(graph);
    check(components <= nodes && components + graph.edges.size() >= nodes);
    const std::vector<std::size_t> degrees = figures::degreeDistribution(graph);
    std::size_t ends = 0;
    for (std::size_t degree = 0; degree < degrees.size(); ++degree)
        ends += degree * degrees[degree];
    check(ends == 2 * graph.edges.size());
    check(std::accumulate(degrees.begin(), degrees.end(), std::size_t{0}) == nodes);
    checkPath(graph, figures::longestPath(graph));
    check(!figures::report(graph, figures::Language::german).empty());
    return 0;
}
