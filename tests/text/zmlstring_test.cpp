#include "zbasic/zmlstring.h"

#include <gtest/gtest.h>

#include <atomic>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

#include "support/child.h"
#include "support/temp_dir.h"
#include "zbasic/zinter.h"

using namespace std::string_literals;

namespace {

constexpr int kUntouched = -1;

const std::string kHeader = "\xE1\x05\xE1\x05\x00\x90\x03\x00"s;
const std::string kEnd(4, '\0');

std::string record(std::uint32_t id, const std::string& text) {
    std::string bytes;
    for (const std::uint32_t number : {static_cast<std::uint32_t>(text.size()), id}) {
        for (int shift = 0; shift < 32; shift += 8) bytes += static_cast<char>(number >> shift);
    }
    for (const char c : text) bytes += static_cast<char>(c ^ 0x5C);
    return bytes;
}

const std::string kLong = "a text that is too long to lie in the object itself";

struct LanguageFile {
    int language;
    std::string bytes;
};

// Ids from 100 on belong to the files that are not as they should be.
const LanguageFile kFiles[] = {
    {1033, kHeader + record(7, "File") + record(6, "Neu") + record(8, "New") + record(30, "abc") +
               record(65535, "highest") + record(31, "m\xFC") + kEnd},
    {1031, kHeader + record(9, "Datei") + record(7, "Datei") + record(8, "Neu") + record(30, "ab") +
               record(20, kLong) + kEnd},
    {1036, "MZ" + (kHeader + record(100, "magic") + kEnd).substr(2)},
    {1040, kHeader.substr(0, 4) + "\1" + kHeader.substr(5) + record(101, "version") + kEnd},
    {1041, kHeader + kEnd},
    {1043, kHeader.substr(0, 7)},
    {1045, ""},
    {1034, kHeader + record(102, "no terminator")},
    {1035, kHeader + record(103, "whole") + record(104, "cut off").substr(0, 12)},
    {1030, kHeader + record(105, "whole") + "\xFF\xFF\xFF\x7F\x6A\0\0\0too long"s},
    {1029, kHeader + record(107, "first") + record(107, "second") + kEnd},
    {1038, kHeader + record(0x1006C, "low bits") + kEnd},
    {1032, kHeader + record(109, "before") + "\xFF\xFF\xFF\xFF" + record(110, "behind") + kEnd},
};

// This program with all it needs in a folder of its own, for its folder is where the texts are.
class MultiLanguage : public ::testing::Test {
protected:
    MultiLanguage() {
        const std::filesystem::path from = programFolder();
        for (const auto& entry : std::filesystem::directory_iterator(from)) {
            const bool isWanted =
                entry.path().extension() == ".dll" || entry.path().filename() == "test_text.exe";
            if (isWanted) {
                std::filesystem::copy_file(entry.path(), m_folder.root() / entry.path().filename());
            }
        }
        std::string list;
        for (const auto& [language, bytes] : kFiles) {
            list += std::to_string(language) + "\n";
            m_folder.write("language\\" + std::to_string(language) + "\\zelml.dll", bytes);
        }
        m_folder.write("lang.ini", list + "1053\n");  // one without a file
        m_folder.write("language\\1033\\changed.dll",
                       kHeader + record(7, "Changed") + record(40, "Added") + kEnd);
    }

    // The answers to the questions, one line each.
    std::vector<std::string> ask(const std::vector<std::string>& questions) const {
        std::vector<std::string> arguments = {"--child", "multiLanguage"};
        arguments.insert(arguments.end(), questions.begin(), questions.end());
        const ChildResult result = runProgram(m_folder.path("test_text.exe"), arguments);
        EXPECT_EQ(result.exitCode, 0u) << result.err;
        std::istringstream lines(result.out);
        std::vector<std::string> answers;
        for (std::string line; std::getline(lines, line);) answers.push_back(line);
        return answers;
    }

    struct Case {
        const char* why;
        std::string question;
        std::string answer;
    };
    void expectAnswers(const std::vector<Case>& cases) const {
        std::vector<std::string> questions;
        for (const Case& row : cases) questions.push_back(row.question);
        const std::vector<std::string> answers = ask(questions);
        ASSERT_EQ(answers.size(), cases.size());
        for (std::size_t i = 0; i < cases.size(); ++i) {
            EXPECT_EQ(answers[i], cases[i].answer) << cases[i].why << ": " << cases[i].question;
        }
    }

private:
    TempDir m_folder;
};

std::string answer(bool found, int length) {
    return (found ? "true " : "false ") + std::to_string(length);
}

// Both forms must say the same.
template <class Look>
std::string both(const std::string& text, Look look) {
    const std::string one = look(text.c_str());
    const std::string other = look(SV::String(text.c_str()));
    return one == other ? one : "forms differ: " + one + ", " + other;
}

std::string nullArguments() {
    const char* const none = nullptr;
    Zel_MultiLangEquals("File", 7, nullptr);
    Zel_MultiLangStartsWith("File", 7, nullptr);
    Zel_MultiLangSearchForAny("File", 7, nullptr);
    int length = kUntouched;
    const bool found = Zel_MultiLangEquals(none, 7, &length) ||
                       Zel_MultiLangStartsWith(none, 7, &length) ||
                       Zel_MultiLangFindResId(none) != 0;
    return answer(found, length);
}

std::string severalThreads() {
    std::atomic<int> faults = 0;
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i) {
        threads.emplace_back([&faults] {
            for (int round = 0; round < 2000; ++round) {
                const bool isRight =
                    Zel_MultiLangGet(20, 1031) == kLong && Zel_MultiLangGet(7, 1033) == "File" &&
                    Zel_MultiLangGet(7, 9999).empty() && Zel_MultiLangFindResId("Datei") == 9;
                if (!isRight) ++faults;
            }
        });
    }
    for (std::thread& thread : threads) thread.join();
    return std::to_string(faults) + " faults";
}

std::string change(const std::string& what) {
    if (what == "load") Zel_InitializeMultiLanguageStrings();
    if (what == "clear") Zel_DeinitializeMultiLanguageStrings();
    if (what == "swap") {
        const std::filesystem::path folder =
            std::filesystem::path(programFolder()) / "language/1033";
        std::filesystem::rename(folder / "changed.dll", folder / "zelml.dll");
    }
    return "done";
}

std::string lookUp(const std::string& question) {
    std::istringstream stream(question);
    std::string what;
    unsigned short id = 0;
    stream >> what;
    if (what != "find") stream >> id;
    std::string text;
    if (stream.get() == ' ') std::getline(stream, text);

    if (what == "get") {
        const SV::String found = Zel_MultiLangGet(id, static_cast<unsigned short>(std::stoi(text)));
        return std::string(found.begin(), found.end());
    }
    if (what == "equals") {
        return both(text, [&](const auto& form) {
            int length = kUntouched;
            const bool found = Zel_MultiLangEquals(form, id, &length);
            return answer(found, length);
        });
    }
    if (what == "starts") {
        return both(text, [&](const auto& form) {
            int length = kUntouched;
            const bool found = Zel_MultiLangStartsWith(form, id, &length);
            return answer(found, length);
        });
    }
    if (what == "search") {
        int length = kUntouched;
        const int position = Zel_MultiLangSearchForAny(text.c_str(), id, &length);
        return std::to_string(position) + " " + std::to_string(length);
    }
    if (what == "find") {
        return both(text,
                    [](const auto& form) { return std::to_string(Zel_MultiLangFindResId(form)); });
    }
    if (what == "null") return nullArguments();
    if (what == "threads") return severalThreads();
    return change(what);
}

}  // namespace

CHILD_MAIN(multiLanguage) {
    ZelInternational::InitAvailableLanguages();
    for (int i = 1; i < argc; ++i) std::puts(lookUp(argv[i]).c_str());
    return 0;
}

TEST_F(MultiLanguage, GivesTheTextOfALanguage) {
    expectAnswers({
        {"before loading", "get 7 1031", ""},
        {"", "load", "done"},
        {"", "get 7 1031", "Datei"},
        {"", "get 7 1033", "File"},
        {"highest id", "get 65535 1033", "highest"},
        {"code page", "get 31 1033", "m\xFC"},
        {"long", "get 20 1031", kLong},
        {"long once more, shared now", "get 20 1031", kLong},
        {"only in another language", "get 20 1033", ""},
        {"no such resource", "get 5000 1033", ""},
        {"no such language", "get 7 9999", ""},
        {"language without a file", "get 7 1053", ""},
    });
}

TEST_F(MultiLanguage, TakesWhatIsGoodOfEveryFile) {
    expectAnswers({
        {"", "load", "done"},
        {"wrong magic", "get 100 1036", ""},
        {"wrong version", "get 101 1040", ""},
        {"only header and terminator", "get 7 1041", ""},
        {"half a header", "get 7 1043", ""},
        {"empty file", "get 7 1045", ""},
        {"no terminator", "get 102 1034", "no terminator"},
        {"before a record that is cut off", "get 103 1035", "whole"},
        {"cut off", "get 104 1035", ""},
        {"before a length beyond the file", "get 105 1030", "whole"},
        {"length beyond the file", "get 106 1030", ""},
        {"an id twice keeps the first text", "get 107 1029", "first"},
        {"of an id the low 16 bits count", "get 108 1038", "low bits"},
        {"before a negative length", "get 109 1032", "before"},
        {"a negative length ends the file", "get 110 1032", ""},
    });
}

TEST_F(MultiLanguage, ComparesWithAllLanguages) {
    expectAnswers({
        {"before loading", "equals 7 File", "false -1"},
        {"before loading", "starts 7 File", "false -1"},
        {"before loading", "search 7 File", "2147483647 -1"},
        {"", "load", "done"},
        {"second language", "equals 7 File", "true 4"},
        {"first language", "equals 7 Datei", "true 5"},
        {"case matters", "equals 7 file", "false -1"},
        {"only the start", "equals 7 Files", "false -1"},
        {"too short", "equals 7 Fil", "false -1"},
        {"empty", "equals 7 ", "false -1"},
        {"empty, and no such resource", "equals 5000 ", "false -1"},
        {"the same", "starts 7 File", "true 4"},
        {"longer", "starts 7 Filename", "true 4"},
        {"shorter", "starts 7 Fil", "false -1"},
        {"case matters", "starts 7 filename", "false -1"},
        {"lowest language wins, not the longest text", "starts 30 abcd", "true 2"},
        {"no such resource", "starts 5000 x", "false -1"},
        {"earliest position wins", "search 7 a File or a Datei", "2 4"},
        {"earliest position wins, first language", "search 7 a Datei or a File", "2 5"},
        {"tie keeps the lower language", "search 30 xabc", "1 2"},
        {"at the end", "search 8 so Neu", "3 3"},
        {"not found, length written all the same", "search 7 nothing", "2147483647 4"},
        {"empty", "search 7 ", "2147483647 4"},
        {"no such resource", "search 5000 x", "2147483647 -1"},
        {"null texts and lengths", "null", "false -1"},
    });
}

TEST_F(MultiLanguage, FindsTheResourceOfAText) {
    expectAnswers({
        {"before loading", "find File", "0"},
        {"", "load", "done"},
        {"", "find File", "7"},
        {"last id in a language, whatever the order of the file", "find Datei", "9"},
        {"highest language, although its id is lower", "find Neu", "6"},
        {"long", "find " + kLong, "20"},
        {"highest id", "find highest", "65535"},
        {"case matters", "find file", "0"},
        {"a part only", "find Fil", "0"},
        {"empty", "find ", "0"},
    });
}

TEST_F(MultiLanguage, LoadsAgain) {
    expectAnswers({
        {"", "load", "done"},
        {"", "find File", "7"},
        {"", "swap", "done"},
        {"without clearing", "load", "done"},
        {"what is there stays", "get 7 1033", "File"},
        {"what is new comes", "get 40 1033", "Added"},
        {"also for the way back", "find Added", "40"},
        {"", "clear", "done"},
        {"cleared", "get 7 1033", ""},
        {"cleared", "equals 7 Datei", "false -1"},
        {"cleared", "find Datei", "0"},
        {"", "load", "done"},
        {"loaded anew", "get 7 1033", "Changed"},
        {"loaded anew", "find File", "0"},
        {"loaded anew", "find Datei", "9"},
    });
}

TEST_F(MultiLanguage, MayBeAskedBySeveralThreads) {
    expectAnswers({{"", "load", "done"}, {"", "threads", "0 faults"}});
}
