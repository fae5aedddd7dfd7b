// Times that nodes bring along: how long their work takes, and when they were last changed.
//
//     node [ id 1 duration "00:001:02:03:04" changed "2024:02:29 12:00:00" ]

#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "model/graph.h"
#include "zbasic/zcoretime.h"

namespace zelhost {

// What a value of `key` must be and is not: the text of a message that has the value for its
// detail. Null where it is, and for other keys.
const char* wrongTime(KeyId key, std::string_view text);

// The node's value, empty when it has none that is right.
std::string durationOf(const Graph& graph, const Node& node);
std::string changeOf(const Graph& graph, const Node& node);

struct NodeTimes {
    std::size_t durations = 0;  // that are right
    ZelCoreTime total;
    std::string lastChange;  // as nodes have it; empty without one
};

NodeTimes timesOf(const Graph& graph);

}  // namespace zelhost
