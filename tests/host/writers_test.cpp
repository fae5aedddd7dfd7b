#include <gtest/gtest.h>

#include <string>

#include "host/graph_text.h"
#include "model/csv_writer.h"
#include "model/gml_writer.h"
#include "model/graphml_writer.h"

using zelhost::Graph;
using zelhost::WriteChunk;

namespace {

using Writer = bool (*)(const Graph& graph, const WriteChunk& write);

std::string written(Writer writer, const Graph& graph) {
    std::string text;
    EXPECT_TRUE(writer(graph, [&](std::string_view bytes) {
        text += bytes;
        return true;
    }));
    return text;
}

std::string written(Writer writer, const char* gml) { return written(writer, graphOf(gml)); }

// What lies between the first `from` and the next `to` behind it.
std::string between(const std::string& text, const std::string& from, const std::string& to) {
    const std::size_t start = text.find(from);
    if (start == text.npos) return "no " + from;
    const std::size_t end = text.find(to, start + from.size());
    return text.substr(start + from.size(), end - start - from.size());
}

}  // namespace

TEST(GmlWriter, WritesOneEntryALine) {
    EXPECT_EQ(
        written(zelhost::writeGml,
                "Creator \"x\" graph[ directed 1 edge [ w .5 target 2 source 1 ]"
                " node [ label \"a\nb\" id 1 g [ x +1 p [ ] ] ] node [ id 2 ] label \"\" ] end -3"),
        "Creator \"x\"\nend -3\ngraph [\n  directed 1\n  label \"\"\n"
        "  node [\n    id 1\n    label \"a\nb\"\n    g [\n      x 1\n      p [\n      ]\n    ]\n  "
        "]\n"
        "  node [\n    id 2\n  ]\n"
        "  edge [\n    source 1\n    target 2\n    w .5\n  ]\n]\n");
}

TEST(GmlWriter, EncodesTexts) {
    struct Case {
        const char* why;
        const char* text;  // as it stands in the file that is read
        const char* expected;
    };
    const Case cases[] = {
        {"what GML needs encoded", "&lt;a&gt; & &quot;", "&lt;a&gt; &amp; &#34;"},
        {"Latin 1 and code page 1252", "\xC3\xA4\xE2\x82\xAC", "&auml;&euro;"},
        {"characters beyond", "a\xE4\xB8\x8B\xC3\xA4\xF0\x9F\x98\x80", "a&#19979;&auml;&#128512;"},
        {"text that looks like a reference", "&amp;#19979;&amp;auml;", "&amp;#19979;&amp;auml;"},
        {"control characters", "a\tb\n&#13;&#1;&#128;\x7F", "a\tb\n&#13;&#1;&#128;\x7F"},
    };
    for (const auto& [why, text, expected] : cases) {
        SCOPED_TRACE(why);
        const Graph graph = graphOf("graph [ l \"" + std::string(text) + "\" ]");
        const std::string gml = written(zelhost::writeGml, graph);
        EXPECT_EQ(gml, "graph [\n  l \"" + std::string(expected) + "\"\n]\n");
        EXPECT_EQ(describe(graphOf(gml)), describe(graph));
    }
}

TEST(GmlWriter, WritesWhatReadsBackTheSame) {
    std::string everyCharacter;
    for (int c = 1; c < 0x3000; ++c)
        everyCharacter += "&#" + std::to_string(c) + (c % 500 ? ";" : ";\n");
    const Graph graph = graphOf(
        "Version 2 graph [ a 99999999999999999999 b 1e5 c [ d [ e \"\" ] f 1 ] c 3"
        " node [ id 5 label \"" +
        everyCharacter +
        "\" ] node [ id -3 label \"a=\" ]"
        " edge [ source 5 target 5 id 4 ] edge [ source -3 target 5 ] ]");
    const std::string gml = written(zelhost::writeGml, graph);
    EXPECT_EQ(describe(graphOf(gml)), describe(graph));
    EXPECT_EQ(written(zelhost::writeGml, graphOf(gml)), gml);
}

// References would make the line too long for the reader.
TEST(GmlWriter, WritesLongLinesInUtf8) {
    std::string label;
    for (int i = 0; i < 1500; ++i) label += "\xD0\x9A\xC3\xA4";
    const Graph graph = graphOf("graph [ l \"" + label + "&amp;&#13;\" m \"\xC3\xA4\n" +
                                std::string(7000, 'x') + "\" ]");
    const std::string gml = written(zelhost::writeGml, graph);
    EXPECT_NE(gml.find("l \"" + label + "&amp;&#13;\""), gml.npos);
    EXPECT_EQ(describe(graphOf(gml)), describe(graph));
}

TEST(GraphmlWriter, WritesTheWholeGraph) {
    EXPECT_EQ(
        written(zelhost::writeGraphml,
                "Creator \"c\" graph [ directed 1 node [ id 1 label \"a\" g [ x 1.5 ] ]"
                " node [ id -2 ] edge [ source 1 target -2 id 7 ] edge [ source 1 target 1 ] ]"),
        "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
        "<graphml xmlns=\"http://graphml.graphdrawing.org/xmlns\""
        " xmlns:xsi=\"http://www.w3.org/2001/XMLSchema-instance\""
        " xsi:schemaLocation=\"http://graphml.graphdrawing.org/xmlns"
        " http://graphml.graphdrawing.org/xmlns/1.0/graphml.xsd\">\n"
        "  <key id=\"g0\" for=\"graph\" attr.name=\"Creator\" attr.type=\"string\"/>\n"
        "  <key id=\"g1\" for=\"graph\" attr.name=\"directed\" attr.type=\"int\"/>\n"
        "  <key id=\"v0\" for=\"node\" attr.name=\"label\" attr.type=\"string\"/>\n"
        "  <key id=\"v1\" for=\"node\" attr.name=\"g.x\" attr.type=\"double\"/>\n"
        "  <key id=\"e0\" for=\"edge\" attr.name=\"id\" attr.type=\"int\"/>\n"
        "  <graph id=\"G\" edgedefault=\"directed\">\n"
        "    <data key=\"g0\">c</data>\n"
        "    <data key=\"g1\">1</data>\n"
        "    <node id=\"n1\">\n"
        "      <data key=\"v0\">a</data>\n"
        "      <data key=\"v1\">1.5</data>\n"
        "    </node>\n"
        "    <node id=\"n-2\">\n"
        "    </node>\n"
        "    <edge source=\"n1\" target=\"n-2\">\n"
        "      <data key=\"e0\">7</data>\n"
        "    </edge>\n"
        "    <edge source=\"n1\" target=\"n1\">\n"
        "    </edge>\n"
        "  </graph>\n"
        "</graphml>\n");
}

TEST(GraphmlWriter, ChoosesTheNarrowestTypeForAllValues) {
    struct Case {
        const char* why;
        const char* values;
        const char* type;
    };
    const Case cases[] = {
        {"the limits of 32 bits", "a 2147483647 a -2147483648", "int"},
        {"beyond 32 bits", "a 1 a 2147483648", "long"},
        {"below them", "a -2147483649 a 1", "long"},
        {"beyond 64 bits", "a 9223372036854775808", "double"},
        {"a real among them", "a 1 a 1.5 a 2147483648", "double"},
        {"a text among them", "a \"x\" a 1", "string"},
    };
    for (const auto& [why, values, type] : cases) {
        SCOPED_TRACE(why);
        std::string gml = "graph [";  // each value at a node of its own
        std::string_view rest = values;
        for (int id = 0; !rest.empty(); ++id) {
            const std::size_t end = rest.find(" a ", 1);
            gml +=
                " node [ id " + std::to_string(id) + " " + std::string(rest.substr(0, end)) + " ]";
            rest.remove_prefix(std::min(end, rest.size()));
        }
        const std::string xml = written(zelhost::writeGraphml, graphOf(gml + " ]"));
        EXPECT_EQ(between(xml, "attr.name=\"a\" attr.type=\"", "\""), type);
    }
}

TEST(GraphmlWriter, GivesEveryValueAKeyOfItsOwn) {
    const std::string xml = written(zelhost::writeGraphml,
                                    "graph [ node [ id 1 a 1 a 2 p [ x 3 x 4 ] p [ x 5 ] a [ b 6 ] "
                                    "] node [ id 2 p [ x 7 ] ] ]");
    std::string names;
    for (int i = 0; i < 6; ++i) {
        names +=
            between(xml, "<key id=\"v" + std::to_string(i) + "\" for=\"node\" attr.name=\"", "\"") +
            "=";
        names += between(xml, "<data key=\"v" + std::to_string(i) + "\">", "<") + " ";
    }
    EXPECT_EQ(names, "a=1 a.2=2 p.x=3 p.x.2=4 p.2.x=5 a.3.b=6 ");
    EXPECT_EQ(between(xml, "<node id=\"n2\">\n", "\n"), "      <data key=\"v2\">7</data>");
}

TEST(GraphmlWriter, EncodesTexts) {
    struct Case {
        const char* why;
        const char* text;
        const char* expected;
    };
    const Case cases[] = {
        {"what XML needs encoded", "&lt;a&gt; & &quot;'", "&lt;a&gt; &amp; &quot;'"},
        {"what looks like a reference", "&amp;#19979;", "&amp;#19979;"},
        {"characters as they are", "\xC3\xA4\xE4\xB8\x8B\xF0\x9F\x98\x80",
         "\xC3\xA4\xE4\xB8\x8B\xF0\x9F\x98\x80"},
        {"all of code page 1252", "&euro;&Yuml;&bdquo;", "&#8364;\xC5\xB8\xE2\x80\x9E"},
        {"white space that readers would change", "a\tb\n&#13;", "a&#9;b&#10;&#13;"},
        {"what XML forbids is dropped", "a&#1;&#31;&#65534;&#65535;b", "ab"},
        {"what it only advises against is not", "\x7F&#128;&#159;", "\x7F\xC2\x80\xC2\x9F"},
    };
    for (const auto& [why, text, expected] : cases) {
        SCOPED_TRACE(why);
        const std::string xml =
            written(zelhost::writeGraphml, ("graph [ l \"" + std::string(text) + "\" ]").c_str());
        EXPECT_EQ(between(xml, "<data key=\"g0\">", "</data>"), expected);
    }
}

TEST(GraphmlWriter, SaysWhetherEdgesHaveADirection) {
    EXPECT_EQ(between(written(zelhost::writeGraphml, "graph [ ]"), "edgedefault=\"", "\""),
              "undirected");
    EXPECT_EQ(
        between(written(zelhost::writeGraphml, "graph [ directed 0 ]"), "edgedefault=\"", "\""),
        "undirected");
}

TEST(CsvWriter, WritesNodesAndEdges) {
    const char* const gml =
        "graph [ node [ id 1 label \"a;b\" w 2 ] node [ id 2 name \"say &quot;hi&quot;\nnow&#13;\" "
        "]"
        " node [ id 3 w \"\xC3\xA4\xE4\xB8\x8B\" p [ x .5 ] ] edge [ source 1 target 3 w 1 w 2 ]"
        " edge [ source 2 target 2 ] ]";
    EXPECT_EQ(written(zelhost::writeNodesCsv, gml),
              "\xEF\xBB\xBFid;caption;label;w;name;p.x\n"
              "1;\"a;b\";\"a;b\";2;;\n"
              "2;\"say \"\"hi\"\" now \";;;\"say \"\"hi\"\" now \";\n"
              "3;3;;\xC3\xA4\xE4\xB8\x8B;;.5\n");
    EXPECT_EQ(written(zelhost::writeEdgesCsv, gml),
              "\xEF\xBB\xBFsource;target;w;w.2\n1;3;1;2\n2;2;;\n");
    EXPECT_EQ(written(zelhost::writeEdgesCsv, "graph [ ]"), "\xEF\xBB\xBFsource;target\n");
}

TEST(CsvWriter, EndsInTheSumOfDurations) {
    EXPECT_EQ(
        written(zelhost::writeNodesCsv,
                "graph [ node [ id 1 duration \"00:364:23:59:59\" w 1 ]"
                " node [ id 2 duration \"soon\" ] node [ id 3 duration \":000:00:00:02\" ] ]"),
        "\xEF\xBB\xBFid;caption;duration;w\n1;1;00:364:23:59:59;1\n2;2;soon;\n"
        "3;3;:000:00:00:02;\n;total;01:000:00:00:01;\n");
}

TEST(Writers, ReportThatNothingMoreCanBeWritten) {
    std::string gml = "graph [";
    for (int i = 0; i < 50000; ++i) gml += "\nnode [ id " + std::to_string(i) + " ]";
    for (int i = 0; i < 9000; ++i) gml += "\nedge [ source 1 target " + std::to_string(i) + " ]";
    const Graph graph = graphOf(gml + " ]");
    for (const Writer writer : {zelhost::writeGml, zelhost::writeGraphml, zelhost::writeNodesCsv,
                                zelhost::writeEdgesCsv}) {
        const std::size_t size = written(writer, graph).size();
        for (const std::size_t room : {std::size_t{0}, size / 2, size - 1}) {
            std::size_t taken = 0;
            bool isFull = false;
            EXPECT_FALSE(writer(graph, [&](std::string_view bytes) {
                EXPECT_FALSE(isFull) << "written to after it had failed";
                taken += bytes.size();
                isFull = taken > room;
                return !isFull;
            }));
        }
    }
}
