#include "model/caption_filter.h"

#include <gtest/gtest.h>

#include <string>

#include "host/graph_text.h"

using zelhost::CaptionFilter;
using zelhost::Graph;

TEST(CaptionFilter, KeepsNodesWhoseWholeCaptionMatches) {
    struct Case {
        const char* why;
        const char* pattern;  // in the code page
        const char* ids;
    };
    const Case cases[] = {
        {"two of a caption", "a", "1,3,"},
        {"in any case", "A", "1,3,"},
        {"no part of a caption", "b", ""},
        {"a part with stars", "*B*", "6,"},
        {"a caption beyond ASCII", "\xC4", "4,"},
        {"and in the other case", "\xE4", "4,"},
        {"a caption out of the id", "5", "5,"},
        {"two characters", "??", "2,"},
        {"a character that the code page lacks", "abc ?", "6,"},
        {"all", "*", "1,2,3,4,5,6,"},
    };
    for (const auto& [why, pattern, ids] : cases) {
        SCOPED_TRACE(why);
        Graph graph = graphOf(
            "graph [ node [ id 1 label \"a\" ] node [ id 2 label \"?*\" ]"
            " node [ id 3 label \"a\" ] node [ id 4 label \"&Auml;\" ] node [ id 5 ]"
            " node [ id 6 label \"Abc &#x4E0B;\" ] ]");
        const CaptionFilter filter{SV::String(pattern)};
        ASSERT_TRUE(filter.isUsable());
        filter.apply(graph);
        std::string kept;
        for (const zelhost::Node& node : graph.nodes) kept += std::to_string(node.id) + ",";
        EXPECT_EQ(kept, ids);
    }
}
