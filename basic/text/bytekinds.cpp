#include "text/bytekinds.h"

namespace {

ByteSet joined(std::initializer_list<ByteSet> sets) {
    ByteSet all;
    for (const ByteSet& set : sets) all.add(set);
    return all;
}

}  // namespace

std::optional<ByteSet> byteClass(std::string_view name) {
    const ByteKinds& kinds = byteKinds();
    if (name == "alpha") return kinds.alpha;
    if (name == "digit") return kinds.digit;
    if (name == "alnum") return joined({kinds.alpha, kinds.digit});
    if (name == "upper") return kinds.upper;
    if (name == "lower") return kinds.lower;
    if (name == "space") return kinds.space;
    if (name == "blank") return kinds.blank;
    if (name == "punct") return kinds.punct;
    if (name == "cntrl") return kinds.cntrl;
    if (name == "xdigit") return kinds.xdigit;
    const ByteSet graph = joined({kinds.alpha, kinds.digit, kinds.punct});
    if (name == "graph") return graph;
    if (name == "print") {
        ByteSet print = graph;
        kinds.blank.forEach([&](unsigned char byte) {
            if (!kinds.cntrl.contains(byte)) print.add(byte);  // not the tab
        });
        return print;
    }
    return std::nullopt;
}
