// Graphs as short texts, for the tables of tests.

#pragma once

#include <string>
#include <string_view>

#include "model/gml_reader.h"
#include "model/graph.h"

// One line, reals marked by an "r": attributes beside the graph, then of it, its nodes and its
// edges (ends by node id):
//
//     Creator="x"|directed=1|1{label="a" g{x=r.5}}2{}|1-2{}
std::string describe(const zelhost::Graph& graph);

// The graph in a file of these bytes; fails the test when it cannot be read.
zelhost::Graph graphOf(std::string_view gml);

// What reading a file of these bytes says.
zelhost::GmlResult resultOf(std::string_view gml);
