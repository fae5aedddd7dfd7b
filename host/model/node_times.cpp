#include "model/node_times.h"

#include <algorithm>

namespace zelhost {

namespace {

// Texts of files hold no NUL.
std::string timeOf(const Graph& graph, const Node& node, KeyId key) {
    const Attribute* const found = findAttribute(graph.of(node), key);
    if (!found || found->type() != ValueType::text) return {};
    const std::string_view text = graph.attributes.text(*found);
    return wrongTime(key, text) ? std::string() : std::string(text);
}

}  // namespace

const char* wrongTime(KeyId key, std::string_view text) {
    if (key != kDuration && key != kChanged) return nullptr;
    const std::string value(text);
    if (key == kDuration && !ZelCoreTime::isTime(value.c_str())) {
        return "a duration must be like \"00:001:02:03:04\" (years, days, hours, minutes, "
               "seconds): %s";
    }
    if (key == kChanged && !ZelCoreDateTime::IsValidString(value.c_str())) {
        return "\"changed\" must be a day and a time like \"2024:02:29 12:00:00\": %s";
    }
    return nullptr;
}

std::string durationOf(const Graph& graph, const Node& node) {
    return timeOf(graph, node, kDuration);
}

std::string changeOf(const Graph& graph, const Node& node) { return timeOf(graph, node, kChanged); }

NodeTimes timesOf(const Graph& graph) {
    NodeTimes times;
    for (const Node& node : graph.nodes) {
        const std::string duration = durationOf(graph, node);
        if (!duration.empty()) {
            ++times.durations;
            times.total += duration.c_str();
        }
        times.lastChange = std::max(times.lastChange, changeOf(graph, node));  // they sort as text
    }
    return times;
}

}  // namespace zelhost
