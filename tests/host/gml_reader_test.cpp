#include "model/gml_reader.h"
#include "model/node_times.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "host/graph_text.h"
#include "support/temp_dir.h"

using zelhost::GmlResult;
using zelhost::Graph;

namespace {

std::string repeated(const char* text, int count) {
    std::string result;
    for (int i = 0; i < count; ++i) result += text;
    return result;
}

struct GoodCase {
    const char* why;
    std::string gml;
    const char* expected;  // as `describe` gives it
};

void expectGraphs(const std::vector<GoodCase>& cases) {
    for (const auto& [why, gml, expected] : cases) {
        SCOPED_TRACE(why);
        EXPECT_EQ(describe(graphOf(gml)), expected);
    }
}

// The label of the only node.
std::string labelOf(std::string_view bytes) {
    const Graph graph = graphOf("graph [ node [ id 1 label \"" + std::string(bytes) + "\" ] ]");
    return graph.nodes.empty() ? "" : graph.caption(graph.nodes[0]);
}

}  // namespace

TEST(GmlReader, ReadsGraphs) {
    expectGraphs({
        {"nothing but the graph", "graph []", "|||"},
        {"no blanks that could be left out", "graph[node[id 1]node[id 2]edge[source 1 target 2]]",
         "||1{}2{}|1-2{}"},
        {"attributes everywhere, in order",
         "Creator \"c\" Version 1\ngraph [ comment \"x\" node [ id 1 ] directed 1 ]\nafter 2",
         "Creator=\"c\" Version=1 after=2|comment=\"x\" directed=1|1{}|"},
        {"keys in any order",
         "graph [ edge [ a 1 target 2 b 2 source 1 ] node [ b 1 id 2 ] node [ id 1 ] ]",
         "||2{b=1}1{}|1-2{a=1 b=2}"},
        {"nested lists, one of them empty", "graph [ node [ id 1 g [ x 1 p [ y 2 ] e [ ] ] h 3 ] ]",
         "||1{g{x=1 p{y=2} e{}} h=3}|"},
        {"keys that repeat, also those of members elsewhere",
         "graph [ id 7 node [ id 1 a 1 a 2 source 3 ] edge [ id 9 source 1 target 1 l [ id 2 ] ] ]",
         "|id=7|1{a=1 a=2 source=3}|1-1{id=9 l{id=2}}"},
        {"loops and double edges",
         "graph [ node [ id 1 ] node [ id 2 ] edge [ source 2 target 1 ] edge [ source 2 target 1 ]"
         " edge [ source 1 target 1 ] ]",
         "||1{}2{}|2-1{}2-1{}1-1{}"},
        {"a node in a list is no node", "graph [ g [ node [ id 1 ] ] node [ id 1 graph [ ] ] ]",
         "|g{node{id=1}}|1{graph{}}|"},
        {"comments, one of them between key and value",
         "#\n# [ \"\n  # x\ngraph\n#]\n[\n#a\n#b\nnode [ id\n# 5\n1 ]\n]\n# end", "||1{}|"},
        {"a comment of nothing but its sign", "graph [ a 1\n#\nb 2 ]", "|a=1 b=2||"},
        {"a bracket directly behind a text", "graph [ l [ a \"b\"] c 1]", "|l{a=\"b\"} c=1||"},
        {"all line ends", "graph [\r\n#c\rnode [ id 1 ]\n]\r", "||1{}|"},
    });
}

TEST(GmlReader, ReadsNumbers) {
    expectGraphs({
        {"signs and zeros", "graph [ a +5 b -0 c 007 ]", "|a=5 b=0 c=7||"},
        {"the limits of 64 bits", "graph [ a 9223372036854775807 b -9223372036854775808 ]",
         "|a=9223372036854775807 b=-9223372036854775808||"},
        {"whole numbers beyond them", "graph [ a 9223372036854775808 ]",
         "|a=r9223372036854775808||"},
        {"reals as they are spelled", "graph [ a .5 b -1. c +1.50 d 100.0 ]",
         "|a=r.5 b=r-1. c=r+1.50 d=r100.0||"},
        {"exponents get a point and a sign", "graph [ a +1.5e3 b 1E22 c 2e-3 ]",
         "|a=r+1.5e+3 b=r1.0E+22 c=r2.0e-3||"},
    });
}

TEST(GmlReader, FindsNodesByAnyId) {
    expectGraphs({
        {"counting up from a negative one",
         "graph [ node [ id -1 ] node [ id 0 ] edge [ source 0 target -1 ] ]", "||-1{}0{}|0--1{}"},
        {"descending",
         "graph [ node [ id 3 ] node [ id 2 ] node [ id 1 ] edge [ source 3 target 1 ] ]",
         "||3{}2{}1{}|3-1{}"},
        {"first counting up, then not",
         "graph [ node [ id 0 ] node [ id 1 ] edge [ source 0 target 1 ] node [ id 9 ]"
         " node [ id 5 ] edge [ source 5 target 9 ] edge [ source 1 target 0 ] ]",
         "||0{}1{}9{}5{}|0-1{}5-9{}1-0{}"},
        {"both ends of 64 bits",
         "graph [ node [ id 9223372036854775807 ] node [ id -9223372036854775808 ]"
         " edge [ source -9223372036854775808 target 9223372036854775807 ] ]",
         "||9223372036854775807{}-9223372036854775808{}|-9223372036854775808-9223372036854775807{"
         "}"},
    });
}

TEST(GmlReader, DecodesTexts) {
    struct Case {
        const char* why;
        const char* bytes;
        const char* expected;  // UTF-8
    };
    const Case cases[] = {
        {"empty", "", ""},
        {"several lines, blanks kept", " a\n\n  b ", " a\n\n  b "},
        {"what elsewhere means something", "[ # ]\n# no comment", "[ # ]\n# no comment"},
        {"the five of XML", "&amp;&lt;&gt;&quot;&apos;", "&<>\"'"},
        {"Latin 1 by name", "&nbsp;&Auml;&szlig;&yuml;&times;",
         "\xC2\xA0\xC3\x84\xC3\x9F\xC3\xBF\xC3\x97"},
        {"names of code page 1252", "&euro;&bdquo;&Yuml;&zcaron;",
         "\xE2\x82\xAC\xE2\x80\x9E\xC5\xB8\xC5\xBE"},
        {"case tells two apart", "&dagger;&Dagger;", "\xE2\x80\xA0\xE2\x80\xA1"},
        {"numbers", "&#228;&#19979;&#xe4;&#X1F600;&#13;",
         "\xC3\xA4\xE4\xB8\x8B\xC3\xA4\xF0\x9F\x98\x80\r"},
        {"an escaped reference is text", "&amp;#19979;", "&#19979;"},
        {"no entities", "& &; &foo; &#; &#x; &#0; &#xD800; &#x110000; &#1a; &amp",
         "& &; &foo; &#; &#x; &#0; &#xD800; &#x110000; &#1a; &amp"},
        {"backslashes are characters", "a\\\\n", "a\\\\n"},
        {"UTF-8", "\xC3\xA4\xE4\xB8\x8B", "\xC3\xA4\xE4\xB8\x8B"},
        {"code page 1252", "\xE4\x80 &auml;", "\xC3\xA4\xE2\x82\xAC \xC3\xA4"},
        {"its bytes without character", "\x81\xE4", "\xC2\x81\xC3\xA4"},
        {"UTF-8 cut short is code page 1252", "\xC3\xA4\xC3", "\xC3\x83\xC2\xA4\xC3\x83"},
        {"overlong UTF-8 too", "\xC0\xAF", "\xC3\x80\xC2\xAF"},
        {"surrogates in UTF-8 too", "\xED\xA0\x80", "\xC3\xAD\xC2\xA0\xE2\x82\xAC"},
    };
    for (const auto& [why, bytes, expected] : cases) {
        SCOPED_TRACE(why);
        EXPECT_EQ(labelOf(bytes), expected);
    }
}

TEST(GmlReader, DecidesTheEncodingByTheWholeFile) {
    const std::string start = "graph[ a\"";
    std::string padding = repeated("# some comment\n", 69900);
    padding.resize((std::size_t{1} << 20) - 1 - start.size(), '\n');
    // The character straddles two blocks.
    EXPECT_EQ(describe(graphOf(padding + start + "\xC3\xA4\" ]")), "|a=\"\xC3\xA4\"||");
    EXPECT_EQ(describe(graphOf("graph[ a\"\xC3\xA4\" ]\n" + padding + "# \xE4")),
              "|a=\"\xC3\x83\xC2\xA4\"||");
    // A lead byte at the end of a block does not wait for a byte two blocks later.
    std::string block = repeated("# comment      \n", 1 << 16);
    block.back() = '\xC3';
    std::string next = block;
    next.back() = ' ';
    const std::string rest = "\xA4\n" + start + "\xC3\xA4\" ]";
    EXPECT_EQ(describe(graphOf(block + next + rest)), "|a=\"\xC3\x83\xC2\xA4\"||");
    EXPECT_EQ(describe(graphOf("\xEF\xBB\xBFgraph [ a \"\xC3\xA4\" ]")), "|a=\"\xC3\xA4\"||");
}

// Graphviz's gv2gml writes labels like these.
TEST(GmlReader, TakesQuotationMarksThatNobodyEscaped) {
    expectGraphs({
        {"values of tags, over lines",
         "graph [ l \"\n<T A=\"0\" B=\"\"\n C = \"x y\">t</T>\"\n m 1 ]",
         "|l=\"\n<T A=\"0\" B=\"\"\n C = \"x y\">t</T>\" m=1||"},
        {"before the end of the list", "graph [ l \"<BR A=\"L\"/>\" ]", "|l=\"<BR A=\"L\"/>\"||"},
        {"to the end of the line", "graph [ l \"say \"hi\" now\"\nm 1 ]",
         "|l=\"say \"hi\" now\" m=1||"},
        {"two at the end", "graph [ l \"say \"hi\"\"\n]", "|l=\"say \"hi\"\"||"},
        {"no tag is open", "graph [ l \"<b> a=\" m 1 ]", "|l=\"<b> a=\" m=1||"},
        {"a tag that is open, but a blank behind", "graph [ l \"<b a=\" m 1 ]",
         "|l=\"<b a=\" m=1||"},
    });
}

TEST(GmlReader, SaysWhatIsWrongAndWhere) {
    struct Case {
        const char* why;
        std::string gml;
        std::int64_t line;
        const char* message;  // the beginning
    };
    const Case cases[] = {
        {"empty", "", 0, "the file is empty"},
        {"no graph", "a 1\n", 0, "the file holds no graph"},
        {"the graph is a number", "graph 1", 0, "the file holds no graph"},
        {"only white space", " \n\n", 0, "the file holds no graph"},
        {"two graphs", "graph [ ]\ngraph [ ]", 2, "the file holds a second graph"},
        {"not closed", "graph [\n node [\n id 1\n\n", 2, "the list that begins here"},
        {"closed once too often", "graph [\n]\n]\n", 3, "\"]\" without a list"},
        {"no value at the end", "graph [\n id", 2, "the key \"id\" has no value"},
        {"no value before the bracket", "graph [\nnode [\nid ]\n]", 3,
         "the key \"id\" has no value"},
        {"a key as value", "graph [\n label\n node [ ]\n]", 3, "the value of \"label\""},
        {"comma for a point", "graph [ x 1,5 ]", 1, "a key is missing before \",\""},
        {"point alone", "graph [ x . ]", 1, "the value of \"x\""},
        {"exponent alone", "graph [ x e5 ]", 1, "the value of \"x\""},
        {"exponent without digits", "graph [ x 1e+ ]", 1, "the value of \"x\""},
        {"two signs", "graph [ x +-1 ]", 1, "the value of \"x\""},
        {"number as key", "graph [\n\n1 2 ]", 3, "a key is missing before \"1\""},
        {"illegal character in a key", "graph [\n my-key 2 ]", 2, "a key may hold"},
        {"byte that belongs nowhere", "graph [\n \xE4 2 ]", 2, "a key is missing before \"\\xE4\""},
        {"list without key", "graph [\n[ ] ]", 2, "a list without a key"},
        {"text without key", "graph [\n\"a\" ]", 2, "a text without a key: \"a\""},
        {"text that is not closed", "graph [\n a \"b\n c ]\n", 2, "the text that begins here"},
        {"something directly behind a text", "graph [\n a \"b\"c 1\n]", 2,
         "something follows a text"},
        {"comment behind something", "graph [\n id 1 # no\n]", 2, "a comment must begin"},
        {"node without id", "graph [\nnode [\n]\n]", 2, "the node has no \"id\""},
        {"two ids", "graph [\nnode [\nid 1\nid 1 ] ]", 4, "a second \"id\""},
        {"id as text", "graph [ node [ id\n\"1\" ] ]", 2, "\"id\" must be a whole number"},
        {"id as real", "graph [ node [ id 1.0 ] ]", 1, "\"id\" must be a whole number"},
        {"id beyond 64 bits", "graph [ node [ id 9223372036854775808 ] ]", 1,
         "\"id\" must be a whole number"},
        {"id as list", "graph [ edge [ source [ ] ] ]", 1, "\"source\" must be a whole number"},
        {"id that repeats", "graph [\nnode [ id 1 ]\nnode [ id 1 ] ]", 3,
         "a node before has the id 1"},
        {"id that repeats among others",
         "graph [\nnode [ id 5 ]\nnode [ id 1 ]\nnode [ id 7 ] node [ id 5 ] ]", 4,
         "a node before has the id 5"},
        {"edge without source", "graph [\nedge [ target 1 ] ]", 2, "the edge has no \"source\""},
        {"edge without target", "graph [\nedge [ source 1 ] ]", 2, "the edge has no \"target\""},
        {"edge from nowhere", "graph [ node [ id 1 ]\nedge [ source 2 target 1 ] ]", 2,
         "the source of the edge is no node: 2"},
        {"edge to nowhere", "graph [\n\nedge [ source 1\n target 3 ]\nnode [ id 1 ] ]", 3,
         "the target of the edge is no node: 3"},
        {"a NUL byte", std::string("graph [\n\n a \"\0\" ]", 15), 3, "a NUL byte"},
        {"UTF-16", std::string("\xFF\xFEg\0r\0", 6), 0, "the file is in UTF-16"},
        {"a line too long", "graph [\r\n#" + std::string(8191, 'x') + "\n]", 2,
         "the line is longer"},
        {"deep", "graph [\n" + repeated("a [\n", 100000), 501, "lists lie more than 500 deep"},
        {"the first error counts", "graph [ a b\n c d ]", 1, "the value of \"a\""},
    };
    for (const auto& [why, gml, line, message] : cases) {
        SCOPED_TRACE(why);
        const GmlResult result = resultOf(gml);
        EXPECT_EQ(result.status, GmlResult::Status::failed);
        EXPECT_EQ(result.line, line);
        EXPECT_TRUE(inEnglish(result.message).starts_with(message)) << inEnglish(result.message);
    }
}

TEST(GmlReader, NamesFileAndLine) {
    EXPECT_EQ(inEnglish(resultOf("graph [\n]\n]").problemIn("m.gml")),
              "m.gml(3): \"]\" without a list");
    EXPECT_EQ(inEnglish(resultOf("").problemIn("m.gml")), "m.gml: the file is empty");
    Graph graph;
    EXPECT_EQ(inEnglish(zelhost::readGml("no such file.gml", graph).problemIn("f")),
              "f: the file cannot be opened");
    const TempDir directory;
    EXPECT_EQ(zelhost::readGml(directory.root().string(), graph).status, GmlResult::Status::failed);
}

// One more byte would end the process.
TEST(GmlReader, ReadsTheLongestLineWhereverItLies) {
    for (const std::size_t before :
         {std::size_t{0}, std::size_t{5000}, (std::size_t{1} << 20) - 4000}) {
        SCOPED_TRACE(before);
        std::string start;
        while (start.size() + 100 < before) start += std::string(99, ' ') + "\n";
        const std::string longest = "#" + std::string(8190, 'x');
        EXPECT_EQ(describe(graphOf(start + longest + "\r\ngraph [ ]\n" + longest)), "|||");
        EXPECT_EQ(resultOf(start + longest + "x\ngraph [ ]").status, GmlResult::Status::failed);
        EXPECT_EQ(resultOf(start + "graph [ ]\n" + longest + "x").status,
                  GmlResult::Status::failed);
    }
    EXPECT_EQ(resultOf("graph [ ]\n" + std::string(std::size_t{3} << 20, 'x')).line, 2);
}

TEST(GmlReader, AllowsTheDeepestList) {
    const std::string open = repeated("a [ ", zelhost::kDeepestList - 1);
    const std::string close = repeated("] ", zelhost::kDeepestList - 1);
    EXPECT_EQ(resultOf("graph [ " + open + close + "]").status, GmlResult::Status::done);
    EXPECT_EQ(resultOf("graph [ a [ " + open + close + "] ]").status, GmlResult::Status::failed);
}

namespace {

std::string remarkText(const GmlResult& result) {
    std::string text;
    for (const zelhost::Message& remark : result.remarksIn("m")) text += inEnglish(remark) + "\n";
    return text;
}

}  // namespace

TEST(GmlReader, TellsOfTimesThatAreNone) {
    const TempDir directory;
    Graph graph;
    const std::string file = directory.write("m.gml",
                                             "graph [ duration \"free\" node [ id 1\n"
                                             "duration \"00:365:00:00:00\" changed\n"
                                             "\"2023:02:29 12:00:00\" ]\n"
                                             "node [ id 2 duration 5 x [ changed \"free\" ] ]\n"
                                             "node [ id 3 duration \"00:364:23:59:59\"\n"
                                             "changed \"2024:02:29 12:00:00\" ]\n"
                                             "edge [ source 1 target 2 duration \"free\" ] ]");
    const GmlResult result = zelhost::readGml(file, graph);
    EXPECT_EQ(result.status, GmlResult::Status::done);
    EXPECT_EQ(result.remarkCount, 3u);
    const std::string duration =
        "a duration must be like \"00:001:02:03:04\" (years, days, hours, minutes, seconds): ";
    EXPECT_EQ(remarkText(result),
              "m(2): " + duration +
                  "\"00:365:00:00:00\"\nm(3): \"changed\" must be a day and a "
                  "time like \"2024:02:29 12:00:00\": \"2023:02:29 12:00:00\"\nm(4): " +
                  duration + "\"5\"\n");
    EXPECT_EQ(graph.nodes.size(), 3u);
    const zelhost::NodeTimes times = zelhost::timesOf(graph);
    EXPECT_EQ(times.durations, 1u);
    EXPECT_EQ(times.lastChange, "2024:02:29 12:00:00");

    const GmlResult many = resultOf("graph [ node [ id 1 " + repeated("duration 1 ", 25) + "] ]");
    EXPECT_EQ(many.remarkCount, 25u);
    EXPECT_EQ(many.remarks.size(), 20u);
    EXPECT_TRUE(remarkText(many).ends_with("m: and 5 more\n"));
}

TEST(GmlReader, ReportsProgressAndStopsOnRequest) {
    const TempDir directory;
    const std::string file =
        directory.write("m.gml", "graph [\n" + repeated("a 1000\n", 700000) + "]\n");
    std::vector<double> seen;
    Graph whole;
    zelhost::readGml(file, whole, [&](double percent) {
        seen.push_back(percent);
        return true;
    });
    ASSERT_EQ(seen.size(), 4u);  // the file has 4.7 MiB
    for (std::size_t i = 0; i < seen.size(); ++i) {
        EXPECT_NEAR(seen[i], (static_cast<double>(i) + 1) * 100 / 4.67, 2);
    }

    Graph part;
    const GmlResult result = zelhost::readGml(file, part, [](double) { return false; });
    EXPECT_EQ(result.status, GmlResult::Status::cancelled);
    EXPECT_LT(part.graphAttributes.size(), 200000u);
}

TEST(Graph, KnowsDirectionAndCaptions) {
    const Graph graph = graphOf(
        "graph [ directed 1 node [ id 1 name \"n\" label \"l\" ] node [ id 2 name \"n\" ]"
        " node [ id 3 x [ label \"no\" ] ] node [ id 4 label 5 ] node [ id 5 label 1.50 ]"
        " node [ id 6 label \"\" ] node [ id 7 label [ ] name \"n7\" ] ]");
    EXPECT_TRUE(graph.isDirected());
    EXPECT_FALSE(graphOf("graph [ directed 0 ]").isDirected());
    EXPECT_FALSE(graphOf("directed 1 graph [ ]").isDirected());
    std::string captions;
    for (const zelhost::Node& node : graph.nodes) captions += graph.caption(node) + ",";
    EXPECT_EQ(captions, "l,n,3,5,1.50,,n7,");
}

TEST(Graph, KeepsWantedNodesAndTheEdgesBetweenThem) {
    Graph graph = graphOf(
        "graph [ node [ id 1 label \"a\" ] node [ id 2 label \"b\" x 1 ] node [ id 3 label \"a\" ]"
        " edge [ source 1 target 2 ] edge [ source 3 target 1 w 5 ] edge [ source 3 target 3 ] ]");
    graph.keepNodes([](std::string_view caption) { return caption == "a"; });
    EXPECT_EQ(describe(graph), "||1{label=\"a\"}3{label=\"a\"}|3-1{w=5}3-3{}");
}

TEST(Graph, TellsKeysApartWhateverTheirLength) {
    std::string gml = "graph [";
    std::string expected = "|";
    for (int size = 1; size < 20; ++size) {  // keys that differ in one place, and prefixes
        for (int place = 0; place < size; ++place) {
            std::string key(static_cast<std::size_t>(size), 'a');
            key[static_cast<std::size_t>(place)] = 'b';
            gml += " " + key + " 1 " + key + " 2";
            expected += key + "=1 " + key + "=2 ";
        }
    }
    expected.back() = '|';
    EXPECT_EQ(describe(graphOf(gml + " ]")), expected + "|");
}
