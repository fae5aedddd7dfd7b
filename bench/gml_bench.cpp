// Import of a large GML file beside igraph's reader: time and peak memory.
//
//     bench/gml_generate.py > big.gml
//     gml_bench big.gml [rounds]
//
// Each reading runs in a process of its own, so that the peaks do not mix; the readers take
// turns, and the best round of each counts. Times are those of the processor, which other work
// on the machine disturbs least. Both must find the same nodes and edges.

#include <igraph/igraph.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>

#include "model/gml_reader.h"

namespace {

struct Counts {
    long long nodes;
    long long edges;
};

struct Measurement {
    Counts counts;
    double seconds;
    double megabytes;
};

using Reader = Counts (*)(const char* fileName);

Counts readWithIgraph(const char* fileName) {
    std::FILE* const file = std::fopen(fileName, "rb");
    if (!file) std::exit(1);
    igraph_set_attribute_table(&igraph_cattribute_table);
    igraph_t graph;
    if (igraph_read_graph_gml(&graph, file) != IGRAPH_SUCCESS) std::exit(1);
    std::fclose(file);
    return {igraph_vcount(&graph), igraph_ecount(&graph)};
}

Counts readWithZelhost(const char* fileName) {
    static zelhost::Graph graph;  // like the peer's, it is not freed inside the measured time
    const zelhost::GmlResult result = zelhost::readGml(fileName, graph);
    if (result.status != zelhost::GmlResult::Status::done) {
        std::fprintf(stderr, "%s\n", inEnglish(result.problemIn(fileName)).c_str());
        std::exit(1);
    }
    return {static_cast<long long>(graph.nodes.size()), static_cast<long long>(graph.edges.size())};
}

double processorSeconds() {
    rusage usage{};
    ::getrusage(RUSAGE_SELF, &usage);
    const auto seconds = [](const timeval& time) {
        return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
    };
    return seconds(usage.ru_utime) + seconds(usage.ru_stime);
}

[[noreturn]] void runChild(Reader reader, const char* fileName, int resultPipe) {
    Measurement measured{};
    const double start = processorSeconds();
    measured.counts = reader(fileName);
    measured.seconds = processorSeconds() - start;
    const auto written = ::write(resultPipe, &measured, sizeof measured);
    ::_exit(written == sizeof measured ? 0 : 1);
}

Measurement measure(Reader reader, const char* fileName) {
    int ends[2];
    if (::pipe(ends) != 0) std::exit(1);
    const pid_t child = ::fork();
    if (child == 0) runChild(reader, fileName, ends[1]);
    ::close(ends[1]);
    Measurement measured{};
    const auto count = ::read(ends[0], &measured, sizeof measured);
    ::close(ends[0]);
    int status = 0;
    rusage usage{};
    if (::wait4(child, &status, 0, &usage) != child || status != 0 || count != sizeof measured) {
        std::fprintf(stderr, "a reader failed\n");
        std::exit(1);
    }
    measured.megabytes = static_cast<double>(usage.ru_maxrss) / 1024;
    return measured;
}

void keepBest(Measurement& best, const Measurement& next) {
    best.counts = next.counts;
    best.seconds = std::min(best.seconds, next.seconds);
    best.megabytes = std::min(best.megabytes, next.megabytes);
}

void print(const char* name, const Measurement& measured) {
    std::printf("%-8s %9lld nodes %9lld edges %8.2f s %8.0f MB\n", name, measured.counts.nodes,
                measured.counts.edges, measured.seconds, measured.megabytes);
}

}  // namespace

int main(int argc, char** argv) {
    if (argc < 2) {
        std::fprintf(stderr, "usage: gml_bench file.gml [rounds]\n");
        return 2;
    }
    const int rounds = argc > 2 ? std::atoi(argv[2]) : 3;
    Measurement theirs{{}, 1e9, 1e9};
    Measurement ours{{}, 1e9, 1e9};
    for (int i = 0; i < rounds; ++i) {
        keepBest(ours, measure(readWithZelhost, argv[1]));
        keepBest(theirs, measure(readWithIgraph, argv[1]));
    }
    print("igraph", theirs);
    print("zelhost", ours);
    std::printf("%.1f x as fast, %.2f of the memory\n", theirs.seconds / ours.seconds,
                ours.megabytes / theirs.megabytes);
    const bool isSame =
        theirs.counts.nodes == ours.counts.nodes && theirs.counts.edges == ours.counts.edges;
    return isSame ? 0 : 1;
}
