// Import of graphs in GML, the Graph Modelling Language.

#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "model/file_scan.h"
#include "model/graph.h"

namespace zelhost {

// What is said, with the file's name, when memory runs out.
extern const char kNoMemoryForGraph[];

struct GmlResult {
    enum class Status { done, failed, cancelled };

    Status status = Status::done;
    std::int64_t line = 0;  // where it failed, counted from 1; 0 when that is no line
    Message message;        // what is wrong there, in ASCII
    // What is wrong and did no harm, in the order of the file; the first of them, then their count.
    std::vector<FileProblem> remarks;
    std::size_t remarkCount = 0;

    // The message, and all remarks, with their place in the file.
    Message problemIn(const std::string& fileName) const;
    std::vector<Message> remarksIn(const std::string& fileName) const;
};

// Called about once a megabyte with 0 to 100; false ends the import.
using Progress = std::function<bool(double percent)>;

// Lists may lie in one another this deep.
constexpr int kDeepestList = 500;

// Reads the file into `graph`, which is empty before; what it holds unless `done` is no
// whole graph.
//
//     graph [ directed 1 node [ id 1 label "a" ] edge [ source 1 target 1 ] ]
//
// Keys are letters, digits and "_", case matters. A "#" as the first character of a line
// makes it a comment. Whole numbers beyond 64 bits are kept as reals. Nodes and edges may
// come in any order. The bytes are UTF-8 where the whole file is, else code page 1252;
// entities in texts are replaced by their characters.
//
// Of a node, `duration` and `changed` must be times as node_times.h has them: others are
// kept as they are, with a remark.
//
// Programs exist that write quotation marks in texts as they are. They are taken as part of
// the text where what follows leaves no doubt: as values in a tag (`<TD PORT="a">`), and when
// something follows without a blank and the line ends in a quotation mark.
GmlResult readGml(const std::string& fileName, Graph& graph, const Progress& progress = {});

}  // namespace zelhost
