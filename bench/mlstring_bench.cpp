// Multi-language strings beside a map of maps that is filled record by record.
//
// 32 languages of 62,500 texts each (two million), written as files first. Both
// sides read the same files and answer the same questions; the answers are
// compared. Prints times, memory and factors as a table.
//
//     mlstring_bench [texts a language]

#include "text/mlcontainer.h"

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <map>
#include <random>
#include <string>

#if defined(__GLIBC__)
#include <malloc.h>
#endif

#include "text/mlformat.h"

namespace {

constexpr int kLanguages = 32;

using Clock = std::chrono::steady_clock;

double seconds(Clock::time_point start) {
    return std::chrono::duration<double>(Clock::now() - start).count();
}

double heapMegabytes() {
#if defined(__GLIBC__)
    const struct mallinfo2 info = ::mallinfo2();
    return static_cast<double>(info.uordblks + info.hblkhd) / (1 << 20);
#else
    return 0;
#endif
}

void store(std::string& bytes, std::uint32_t number) {
    for (int i = 0; i < 4; ++i) bytes += static_cast<char>(number >> (8 * i));
}

// Most texts are short, as names and messages are; one in eight is a sentence.
std::string makeText(std::mt19937& random, std::uint32_t language, std::uint32_t id) {
    const bool isShared = random() % 16 == 0;  // the same in all languages
    std::string text = "Text " + std::to_string(id);
    if (!isShared) text += "/" + std::to_string(language);
    const std::size_t length = random() % 8 == 0 ? 24 + random() % 80 : 6 + random() % 18;
    while (text.size() < length) text += static_cast<char>('a' + random() % 26);
    return text;
}

void writeFile(const std::string& path, std::uint32_t language, std::uint32_t count) {
    std::mt19937 random(language);
    std::string bytes;
    store(bytes, mlformat::kMagic);
    store(bytes, mlformat::kVersion);
    for (std::uint32_t id = 1; id <= count; ++id) {
        std::string text = makeText(random, language, id);
        store(bytes, static_cast<std::uint32_t>(text.size()));
        store(bytes, id);
        mlformat::toggleKey(text.data(), text.size());
        bytes += text;
    }
    store(bytes, 0);
    std::ofstream(path, std::ios::binary)
        .write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
}

// The plain way.
class MapOfMaps {
public:
    void load(std::uint16_t language, const std::string& path) {
        Table& table = m_languages[language];
        std::ifstream file(path, std::ios::binary);
        next(file);
        next(file);
        for (;;) {
            const auto length = static_cast<std::int32_t>(next(file));
            if (!file || length <= 0) return;
            const auto id = static_cast<std::uint16_t>(next(file));
            std::string text(static_cast<std::size_t>(length), '\0');
            file.read(text.data(), length);
            for (char& c : text) c = static_cast<char>(c ^ mlformat::kKey);
            table.emplace(id, std::move(text));
        }
    }
    std::string text(std::uint16_t id, std::uint16_t language) const {
        const auto table = m_languages.find(language);
        if (table == m_languages.end()) return {};
        const auto found = table->second.find(id);
        return found == table->second.end() ? std::string() : found->second;
    }
    bool equals(std::string_view text, std::uint16_t id) const {
        for (const auto& [language, table] : m_languages) {
            const auto found = table.find(id);
            if (found != table.end() && found->second == text) return true;
        }
        return false;
    }
    std::uint16_t findId(std::string_view text) const {
        std::uint16_t last = 0;
        for (const auto& [language, table] : m_languages) {
            for (const auto& [id, candidate] : table) {
                if (candidate == text) last = id;
            }
        }
        return last;
    }

private:
    using Table = std::map<std::uint16_t, std::string>;
    static std::uint32_t next(std::ifstream& file) {
        char bytes[4] = {};
        file.read(bytes, sizeof bytes);
        return mlformat::load(bytes);
    }
    std::map<std::uint16_t, Table> m_languages;
};

struct Question {
    std::uint16_t id;
    std::uint16_t language;
};

std::vector<Question> questions(std::uint32_t count, std::uint32_t ids) {
    std::mt19937 random(42);
    std::vector<Question> all;
    for (std::uint32_t i = 0; i < count; ++i) {
        all.push_back({static_cast<std::uint16_t>(1 + random() % ids),
                       static_cast<std::uint16_t>(1001 + random() % kLanguages)});
    }
    return all;
}

// Nanoseconds for one of `rounds` passes over the questions; the best of three.
template <class Ask>
double timeOf(const std::vector<Question>& all, int rounds, Ask ask) {
    double best = 1e9;
    for (int repeat = 0; repeat < 3; ++repeat) {
        const auto start = Clock::now();
        for (int round = 0; round < rounds; ++round) {
            for (const Question& question : all) ask(question);
        }
        best = std::min(best, seconds(start) / rounds / static_cast<double>(all.size()));
    }
    return best * 1e9;
}

void report(const char* what, double peer, double ours, const char* unit) {
    std::printf("%-34s %12.1f %12.1f %-3s %8.1fx\n", what, peer, ours, unit, peer / ours);
}

void fail(const char* what) {
    std::fprintf(stderr, "the two sides differ: %s\n", what);
    std::exit(1);
}

}  // namespace

int main(int argc, char** argv) {
    const auto count = static_cast<std::uint32_t>(argc > 1 ? std::atoi(argv[1]) : 62500);
    const auto folder = std::filesystem::temp_directory_path() / "mlstring_bench";
    std::filesystem::create_directories(folder);
    std::vector<std::string> paths;
    std::uintmax_t bytes = 0;
    for (int i = 0; i < kLanguages; ++i) {
        paths.push_back((folder / std::to_string(1001 + i)).string());
        writeFile(paths.back(), static_cast<std::uint32_t>(1001 + i), count);
        bytes += std::filesystem::file_size(paths.back());
    }
    std::printf("%d languages of %u texts, %.1f MB\n", kLanguages, count,
                static_cast<double>(bytes) / (1 << 20));
    std::printf("%-34s %12s %12s\n", "", "map of maps", "ours");

    double memory = heapMegabytes();
    auto start = Clock::now();
    MapOfMaps peer;
    for (int i = 0; i < kLanguages; ++i) {
        peer.load(static_cast<std::uint16_t>(1001 + i), paths[static_cast<std::size_t>(i)]);
    }
    const double peerLoad = seconds(start);
    const double peerMemory = heapMegabytes() - memory;

    memory = heapMegabytes();
    ZelLanguageContainer ours;
    start = Clock::now();
    {
        std::vector<char> buffer;
        for (int i = 0; i < kLanguages; ++i) {
            ZelMLResFileReader(ours.table(static_cast<std::uint16_t>(1001 + i)),
                               paths[static_cast<std::size_t>(i)].c_str())
                .read(buffer);
        }
    }
    const double ourLoad = seconds(start);
    const double ourMemory = heapMegabytes() - memory;
    report("load", peerLoad * 1e3, ourLoad * 1e3, "ms");
    report("memory after loading", peerMemory, ourMemory, "MB");

    start = Clock::now();
    double sum = 0;
    for (const std::string& path : paths) {
        std::ifstream file(path, std::ios::binary | std::ios::ate);
        const auto size = static_cast<std::size_t>(file.tellg());
        auto content = std::make_unique_for_overwrite<char[]>(size);
        file.seekg(0);
        file.read(content.get(), static_cast<std::streamsize>(size));
        mlformat::toggleKey(content.get(), size);
        sum += content[size / 2];
    }
    std::printf("%-34s %12s %12.1f ms (%.0f)\n", "reading and XOR alone", "", seconds(start) * 1e3,
                sum);

    // Answers first, then times.
    const auto everywhere = questions(200'000, count);
    for (const Question& q : everywhere) {
        const std::string text = peer.text(q.id, q.language);
        if (ours.text(q.id, q.language) != std::string_view(text)) fail("text");
        if (ours.equals(text, q.id, nullptr) != peer.equals(text, q.id)) fail("equals");
    }
    std::size_t length = 0;
    const auto measureGet = [&](const char* what, const std::vector<Question>& all, int rounds) {
        const double theirs = timeOf(
            all, rounds, [&](const Question& q) { length += peer.text(q.id, q.language).size(); });
        const double mine = timeOf(
            all, rounds, [&](const Question& q) { length += ours.text(q.id, q.language).size(); });
        report(what, theirs, mine, "ns");
    };
    measureGet("text, 1000 places over and over", questions(1000, count), 200);
    measureGet("text, 200,000 places", everywhere, 2);

    std::vector<Question> shortOnes;
    std::vector<Question> longOnes;
    for (const Question& q : everywhere) {
        const bool isShort = peer.text(q.id, q.language).size() <= SV::String::kInlineCapacity;
        auto& those = isShort ? shortOnes : longOnes;
        if (those.size() < 1000) those.push_back(q);
    }
    measureGet("text, short, 1000 places", shortOnes, 200);
    measureGet("text, long, 1000 places", longOnes, 200);

    const auto all = questions(1000, count);
    std::map<std::pair<int, int>, std::string> wanted;
    for (const Question& q : all) wanted[{q.id, q.language}] = peer.text(q.id, q.language);
    const auto textOf = [&](const Question& q) -> const std::string& {
        return wanted.at({q.id, q.language});
    };
    const double peerEquals =
        timeOf(all, 5, [&](const Question& q) { length += peer.equals(textOf(q), q.id); });
    const double ourEquals =
        timeOf(all, 5, [&](const Question& q) { length += ours.equals(textOf(q), q.id, nullptr); });
    report("equals", peerEquals, ourEquals, "ns");

    memory = heapMegabytes();
    start = Clock::now();
    ours.findId("nothing has this text");
    std::printf("%-34s %12s %12.1f ms, %.1f MB\n", "first findId (makes the index)", "",
                seconds(start) * 1e3, heapMegabytes() - memory);
    const std::vector<Question> few(all.begin(), all.begin() + 10);
    for (const Question& q : few) {
        const std::string text = peer.text(q.id, q.language);
        if (ours.findId(text) != peer.findId(text)) fail("findId");
    }
    const double peerFind =
        timeOf(few, 1, [&](const Question& q) { length += peer.findId(textOf(q)); });
    const double ourFind =
        timeOf(all, 20, [&](const Question& q) { length += ours.findId(textOf(q)); });
    report("findId", peerFind, ourFind, "ns");
    std::printf("(%zu)\n", length);
    std::filesystem::remove_all(folder);
}
