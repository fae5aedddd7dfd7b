// Expressions and wildcards beside TRE, the C library, RE2 and fnmatch. Answers are compared
// before anything is measured.

#include <benchmark/benchmark.h>
#include <fnmatch.h>

#include <cstdio>
#include <cstdlib>
#include <random>
#include <string>
#include <vector>

#include "matcher_peers.h"
#include "text/wildcard.h"
#include "zbasic/zmatcher.h"

namespace {

struct Work {
    const char* name;
    const char* pattern;
    bool ignoresCase;
    const char* hit;  // a text that matches
};

const Work kWorks[] = {
    {"literal", "server", false, "server"},
    {"literal, any case", "server", true, "SerVer"},
    {"identifier", "[A-Z][a-z]+_[0-9]+", false, "Model_17"},
    {"ten words", "client|server|node|edge|graph|model|label|width|height|color", false, "height"},
    {"anchored", "^.*\\.txt$", false, ".txt"},
};

struct Peer {
    const char* name;
    MakeMatcher make;
};
const Peer kPeers[] = {
    {"ours", makeOurs}, {"TRE", makeTre}, {"glibc", makeGlibc}, {"RE2", makeRe2}};

// Words of prose, of which none is a hit.
std::string prose(std::mt19937& random, std::size_t size) {
    static const std::vector<std::string> kWords = {
        "the",  "of",     "Table", "and",   "see",     "cluster", "note_", "A_12", "Hedge",
        "grip", "modest", "late",  "widen", "clients", "heights", "text",  "a.tx", "(12)",
    };
    std::string text;
    while (text.size() < size) {
        std::string word = kWords[random() % kWords.size()];
        if (word == "clients" || word == "heights" || word == "Hedge") word.erase(1, 1);
        text += word + " ";
    }
    text.resize(size);
    return text;
}

// 1,000 lines of 80 bytes; every fourth is a hit.
std::vector<std::string> linesFor(const Work& work) {
    std::mt19937 random(1);
    std::vector<std::string> lines;
    const std::string hit = work.hit;
    for (int i = 0; i < 1000; ++i) {
        std::string line = prose(random, 80);
        const std::size_t place = hit == ".txt" ? 80 - hit.size() : random() % (80 - hit.size());
        if (i % 4 == 0) line.replace(place, hit.size(), hit);
        lines.push_back(line);
    }
    return lines;
}

// 10 MB whose only hit comes last.
std::vector<std::string> textFor(const Work& work) {
    std::mt19937 random(2);
    return {prose(random, 10'000'000) + work.hit};
}

using MakeTexts = std::vector<std::string> (*)(const Work&);

void search(benchmark::State& state, const AnyMatcher& matcher,
            const std::vector<std::string>& texts, bool wantsPositions) {
    std::size_t bytes = 0;
    for (const std::string& text : texts) bytes += text.size();
    for (auto _ : state) {
        int count = 0;
        MatchSpan span;
        for (const std::string& text : texts) {
            count += matcher.search(text.c_str(), text.size(), wantsPositions ? &span : nullptr);
        }
        benchmark::DoNotOptimize(count);
    }
    const auto rounds = static_cast<std::size_t>(state.iterations());
    state.SetBytesProcessed(static_cast<std::int64_t>(rounds * bytes));
    state.SetItemsProcessed(static_cast<std::int64_t>(rounds * texts.size()));
}

void fail(const std::string& what) {
    std::fprintf(stderr, "different answers: %s\n", what.c_str());
    std::exit(1);
}

void compare(const Work& work, const std::vector<std::string>& texts) {
    const auto ours = makeOurs(work.pattern, work.ignoresCase, true);
    int hits = 0;
    for (const Peer& peer : kPeers) {
        const auto matcher = peer.make(work.pattern, work.ignoresCase, true);
        const auto yesOrNo = peer.make(work.pattern, work.ignoresCase, false);
        for (const std::string& text : texts) {
            MatchSpan expected;
            MatchSpan span;
            hits += ours->search(text.c_str(), text.size(), &expected);
            matcher->search(text.c_str(), text.size(), &span);
            const bool isMatch = yesOrNo->search(text.c_str(), text.size(), nullptr);
            if (span != expected || isMatch != (span.start >= 0)) {
                fail(std::string(peer.name) + ", " + work.name + ", " + text.substr(0, 100));
            }
        }
    }
    if (hits == 0) fail(std::string(work.name) + ": no hits");
}

void addSearches(const char* input, MakeTexts make) {
    for (const Work& work : kWorks) {
        const std::vector<std::string> texts = make(work);
        compare(work, texts);
        for (const bool wantsPositions : {false, true}) {
            for (const Peer& peer : kPeers) {
                const std::string name = std::string(input) + "/" + work.name + "/" +
                                         (wantsPositions ? "positions" : "yes or no") + "/" +
                                         peer.name;
                benchmark::RegisterBenchmark(name.c_str(), [=, &work,
                                                            &peer](benchmark::State& state) {
                    search(state, *peer.make(work.pattern, work.ignoresCase, wantsPositions), texts,
                           wantsPositions);
                })->MinTime(0.1);
            }
        }
    }
}

void addCompilations() {
    for (const Work& work : kWorks) {
        for (const bool searches : {false, true}) {
            for (const Peer& peer : kPeers) {
                const std::string name =
                    std::string(searches ? "first use/" : "compile/") + work.name + "/" + peer.name;
                benchmark::RegisterBenchmark(name.c_str(), [=, &work,
                                                            &peer](benchmark::State& state) {
                    const std::string line = linesFor(work)[0];
                    for (auto _ : state) {
                        MatchSpan span;
                        const auto matcher = peer.make(work.pattern, work.ignoresCase, true);
                        if (!searches) continue;
                        matcher->search(line.c_str(), line.size(), &span);
                    }
                })->MinTime(0.05);
            }
        }
    }
}

class Wildcard : public AnyMatcher {
public:
    Wildcard(const char* pattern, int flags) : m_jokerz(pattern, flags) {}
    bool search(const char* text, std::size_t, MatchSpan*) const override {
        return m_jokerz.match(text) != 0;
    }

private:
    ZelJokerz m_jokerz;
};

class Fnmatch : public AnyMatcher {
public:
    explicit Fnmatch(std::string pattern) : m_pattern(std::move(pattern)) {}
    bool search(const char* text, std::size_t, MatchSpan*) const override {
        return fnmatch(m_pattern.c_str(), text, 0) == 0;
    }

private:
    std::string m_pattern;
};

void addWildcard(const std::string& name, const Work& lines, std::shared_ptr<AnyMatcher> ours,
                 std::shared_ptr<AnyMatcher> peer, const char* peerName) {
    const std::vector<std::string> texts = linesFor(lines);
    for (const std::string& text : texts) {
        if (ours->search(text.c_str(), text.size(), nullptr) !=
            peer->search(text.c_str(), text.size(), nullptr)) {
            fail(name + ", " + text);
        }
    }
    for (const auto& [who, matcher] : {std::pair("ours", ours), std::pair(peerName, peer)}) {
        benchmark::RegisterBenchmark((name + "/" + who).c_str(), [texts, matcher = matcher](
                                                                     benchmark::State& state) {
            search(state, *matcher, texts, false);
        })->MinTime(0.1);
    }
}

void addWildcards() {
    for (const char* const pattern : {"*.txt", "*server*", "a?q"}) {
        addWildcard(
            std::string("wildcard/") + pattern, kWorks[std::string(pattern) == "*.txt" ? 4 : 0],
            std::make_shared<Wildcard>(pattern, 0), std::make_shared<Fnmatch>(pattern), "fnmatch");
    }
    for (const char* const pattern : {"server", "ser*", "*er", "s?rver"}) {
        addWildcard(std::string("whole words/") + pattern, kWorks[0],
                    std::make_shared<Wildcard>(pattern, kWildcardWholeWords),
                    makeRe2(expressionOfWildcard(pattern, kWildcardWholeWords), false, false),
                    "RE2");
    }
}

}  // namespace

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    addSearches("lines", linesFor);
    addSearches("10 MB", textFor);
    addWildcards();
    addCompilations();
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
