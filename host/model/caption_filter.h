// Which nodes a user wants to see.

#pragma once

#include "model/graph.h"
#include "sv/string.h"
#include "zbasic/zmatcher.h"

namespace zelhost {

// A wildcard pattern for whole captions, in the code page; case does not count. Characters that the
// code page lacks are matched by "?" and "*" alone.
class CaptionFilter {
public:
    explicit CaptionFilter(const SV::String& pattern);

    bool isUsable() const { return !!m_pattern; }
    // Keeps the nodes that match, and the edges between them.
    void apply(Graph& graph) const;

private:
    ZelJokerz m_pattern;
};

}  // namespace zelhost
