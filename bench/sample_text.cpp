#include "sample_text.h"

#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <map>
#include <random>

namespace {

std::string word(std::mt19937& random) {
    static constexpr const char* kWords[] = {
        "buffer",  "count", "size_t",        "value", "const", "unsigned", "struct", "model",
        "int",     "flags", "__attribute__", "char",  "long",  "extern",   "void",   "node_type",
        "default", "x",     "std",           "handle"};
    return kWords[random() % std::size(kWords)];
}

// A node or an edge of a graph with its graphics.
std::string modelPart(std::mt19937& random) {
    const std::string id = std::to_string(random() % 100000);
    if (random() % 2) {
        return "  edge [\n    source " + id + "\n    target " + std::to_string(random() % 100000) +
               "\n    label \"" + word(random) + "\"\n  ]\n";
    }
    return "  node [\n    id " + id + "\n    label \"" + word(random) + " " + word(random) + " " +
           id + "\"\n    graphics [\n      x " + std::to_string(random() % 5000) + "." +
           std::to_string(random() % 1000) + "\n      y " + std::to_string(random() % 5000) +
           ".25\n      w 120.0\n      h 40.0\n      type \"rectangle\"\n      fill \"#CCCCFF\"\n"
           "    ]\n  ]\n";
}

// A comment, a definition, a structure or a declaration.
std::string headerPart(std::mt19937& random) {
    switch (random() % 4) {
        case 0:
            return "/* The " + word(random) + " of the " + word(random) + " that " + word(random) +
                   " has,\n   as it was when " + word(random) + " began.  */\n\n";
        case 1:
            return "#define\t" + word(random) + "_" + word(random) + "\t0x" +
                   std::to_string(random() % 10000) + "\n";
        case 2:
            return "struct " + word(random) + "\n{\n  " + word(random) + " " + word(random) +
                   ";\n  " + word(random) + " *" + word(random) + "[" +
                   std::to_string(random() % 64) + "];\n};\n\n";
        default:
            return "extern " + word(random) + " " + word(random) + " (" + word(random) + " *__" +
                   word(random) + ", " + word(random) + " __n)\n     __THROW __nonnull ((1, 2));\n";
    }
}

struct Files {
    std::filesystem::path folder;
    std::map<SampleKind, std::string> paths;

    Files() {
        folder = std::filesystem::temp_directory_path() / ("bench" + std::to_string(::getpid()));
        std::filesystem::create_directories(folder);
    }
    ~Files() { std::filesystem::remove_all(folder); }
};

}  // namespace

const std::string& sampleFile(SampleKind kind, std::size_t size) {
    static Files files;
    std::string& path = files.paths[kind];
    if (!path.empty()) return path;
    path = (files.folder / std::to_string(static_cast<int>(kind))).string();
    std::ofstream file(path, std::ios::binary);
    std::mt19937 random(1);
    while (size > 0) {
        std::string part = kind == SampleKind::kModel ? modelPart(random) : headerPart(random);
        if (part.size() > size) part.resize(size);
        file << part;
        size -= part.size();
    }
    return path;
}
