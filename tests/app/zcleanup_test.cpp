#include "zbasic/zcleanup.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <functional>
#include <string>

#include "support/child.h"
#include "support/temp_dir.h"

#include <io.h>

namespace {

class Action : public ZelCleanUpAction {
public:
    explicit Action(std::function<void()> work) : m_work(std::move(work)) {}
    bool execute() override {
        m_work();
        return false;  // which nobody is to look at
    }

private:
    std::function<void()> m_work;
};

void addLetter(std::string& calls, char letter) {
    ZelCleanUp::Instance().AddAction(new Action([&calls, letter] { calls += letter; }));
}

void exitEvent() { ZelExitAppEvent("test").trigger(); }

struct Counted {
    explicit Counted(int& destroyed) : m_destroyed(destroyed) {}
    ~Counted() { ++m_destroyed; }

    int& m_destroyed;
};

}  // namespace

TEST(CleanUp, RunsEachActionOnceInTheOrderOfRegistration) {
    std::string calls;
    for (const char letter : {'a', 'b', 'c'}) addLetter(calls, letter);
    ZelCleanUp::Instance().AddAction(nullptr);
    EXPECT_EQ(calls, "");
    exitEvent();
    EXPECT_EQ(calls, "abc");
    exitEvent();
    EXPECT_EQ(calls, "abc");
    addLetter(calls, 'd');
    exitEvent();
    EXPECT_EQ(calls, "abcd");
}

TEST(CleanUp, RunsWhatIsAddedMeanwhileInTheSamePass) {
    std::string calls;
    ZelCleanUp::Instance().AddAction(new Action([&calls] {
        calls += 'a';
        addLetter(calls, 'c');
    }));
    addLetter(calls, 'b');
    exitEvent();
    EXPECT_EQ(calls, "abc");
}

TEST(CleanUp, RunsNothingTwiceWhenAnActionEndsTheProgramAgain) {
    std::string calls;
    ZelCleanUp::Instance().AddAction(new Action([&calls] {
        calls += 'a';
        exitEvent();
    }));
    addLetter(calls, 'b');
    exitEvent();
    EXPECT_EQ(calls, "ab");
}

TEST(CleanUp, DeletesFilesAndPassesOverMissingOnes) {
    const TempDir folder;
    const std::string twice = folder.write("twice", "");
    std::string calls;
    ZelCleanUp::Instance().AddFileCleanUpAction(twice.c_str());
    ZelCleanUp::Instance().AddFileCleanUpAction(twice.c_str());
    addLetter(calls, 'a');
    exitEvent();
    EXPECT_FALSE(std::filesystem::exists(twice));
    EXPECT_EQ(calls, "a");

    ZelFileCleanUpAction action(folder.write("once", "").c_str());
    EXPECT_EQ(action.GetFileName(), std::string_view(folder.path("once")));
    EXPECT_TRUE(action.execute());
    EXPECT_FALSE(action.execute());
}

struct RemoveCase {
    const char* why;
    std::vector<const char*> registered;
    const char* removed;
    std::vector<const char*> left;  // undeleted by the exit event
};

const RemoveCase kRemovals[] = {
    {"the only one", {"a"}, "a", {"a"}},
    {"never registered", {"a", "b"}, "c", {}},
    {"case-sensitive", {"a"}, "A", {}},
    {"a longer name", {"a"}, "ab", {}},
    {"one of three", {"a", "b", "c"}, "b", {"b"}},
    {"one of a pair", {"a", "a"}, "a", {}},
};

TEST(CleanUp, TakesBackOneFile) {
    for (const auto& [why, registered, removed, left] : kRemovals) {
        SCOPED_TRACE(why);
        const TempDir folder;
        for (const char* name : registered) {
            ZelCleanUp::Instance().AddFileCleanUpAction(folder.write(name, "").c_str());
        }
        ZelCleanUp::Instance().RemoveFileCleanUpAction(folder.path(removed).c_str());
        exitEvent();
        for (const char* name : registered) {
            const bool isLeft = std::ranges::find(left, std::string_view(name)) != left.end();
            EXPECT_EQ(std::filesystem::exists(folder.path(name)), isLeft) << name;
        }
    }
}

TEST(CleanUp, DeletesASingletonOnce) {
    int destroyed = 0;
    ZelSingletonDeleteAction<Counted> action(new Counted(destroyed));
    EXPECT_EQ(destroyed, 0);
    EXPECT_TRUE(action.execute());
    EXPECT_EQ(destroyed, 1);
    EXPECT_TRUE(action.execute());
    EXPECT_EQ(destroyed, 1);
    ZelSingletonDeleteAction<Counted> nothing(nullptr);
    EXPECT_TRUE(nothing.execute());
}

struct StaticObject {
    ~StaticObject() { ::_write(1, "static\n", 7); }
};

CHILD_MAIN(cleanUpAtExit) {
    static const StaticObject object;
    ZelCleanUp& collector = ZelCleanUp::Instance();
    collector.AddAction(new Action([] { ::_write(1, "event\n", 6); }));
    exitEvent();
    collector.AddAction(new Action([] {
        ::_write(1, "exit(", 5);
        exitEvent();  // still reaches the collector, whose other actions therefore run inside
        ::_write(1, ")\n", 2);
    }));
    collector.AddAction(new Action([] { ::_write(1, "behind", 6); }));
    collector.AddFileCleanUpAction(argv[1]);
    return 0;
}

TEST(CleanUp, RunsTheRestAtProcessExit) {
    const TempDir folder;
    const std::string file = folder.write("late", "");
    const ChildResult result = runChild("cleanUpAtExit", {file});
    EXPECT_EQ(result.exitCode, 0u);
    EXPECT_EQ(result.out, "event\nstatic\nexit(behind)\n");
    EXPECT_FALSE(std::filesystem::exists(file));
}
