#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>

#include "zbasic/ztrace.h"

#include <windows.h>

namespace {

constexpr unsigned kPage = 4096;

// Pages of each kind in a row: 0 and 1 read-write, 2 read-only, 3 a guard page, 4 read-write,
// 5 no access, 6 read-write, 7 reserved only, 8 read-write code.
class Pages {
public:
    Pages()
        : m_start(
              static_cast<char*>(::VirtualAlloc(nullptr, 9 * kPage, MEM_RESERVE, PAGE_NOACCESS))) {
        commit(0, 2, PAGE_READWRITE);
        commit(2, 1, PAGE_READONLY);
        commit(3, 1, PAGE_READWRITE | PAGE_GUARD);
        commit(4, 1, PAGE_READWRITE);
        commit(5, 1, PAGE_NOACCESS);
        commit(6, 1, PAGE_READWRITE);
        commit(8, 1, PAGE_EXECUTE_READWRITE);
    }
    Pages(const Pages&) = delete;
    Pages& operator=(const Pages&) = delete;
    ~Pages() { ::VirtualFree(m_start, 0, MEM_RELEASE); }

    char* at(unsigned offset) const { return m_start + offset; }
    void fill(unsigned page) const { std::memset(at(page * kPage), 'x', kPage); }

private:
    void commit(unsigned page, unsigned count, DWORD protection) const {
        ::VirtualAlloc(at(page * kPage), count * kPage, MEM_COMMIT, protection);
    }

    char* m_start;
};

struct RangeCase {
    const char* why;
    unsigned offset;
    unsigned size;
    bool isReadable;
    bool isWriteable;
};

const RangeCase kRanges[] = {
    {"within a page", 10, 20, true, true},
    {"to the last byte of a region", 0, 2 * kPage, true, true},
    {"into a read-only page", kPage, kPage + 1, true, false},
    {"a read-only page", 2 * kPage, kPage, true, false},
    {"into a guard page", 3 * kPage - 1, 2, false, false},
    {"a guard page", 3 * kPage, 1, false, false},
    {"behind a guard page", 4 * kPage, kPage, true, true},
    {"into a page without access", 5 * kPage - 1, 2, false, false},
    {"a page without access", 5 * kPage + 5, 1, false, false},
    {"across a page without access", 4 * kPage, 3 * kPage, false, false},
    {"into reserved memory", 7 * kPage - 1, 2, false, false},
    {"reserved memory", 7 * kPage, 1, false, false},
    {"code that may be written", 8 * kPage, kPage, true, true},
    {"no bytes, even where none may be read", 5 * kPage, 0, true, true},
};

}  // namespace

TEST(MemoryProbe, AnswersForEveryKindOfPage) {
    const Pages pages;
    for (const auto& [why, offset, size, isReadable, isWriteable] : kRanges) {
        SCOPED_TRACE(why);
        EXPECT_EQ(Zel_MemoryIsReadable(pages.at(offset), size), isReadable);
        EXPECT_EQ(Zel_MemoryIsWriteable(pages.at(offset), size), isWriteable);
    }
}

TEST(MemoryProbe, LeavesGuardPagesAlone) {
    const Pages pages;
    EXPECT_FALSE(Zel_MemoryIsReadable(pages.at(3 * kPage), 1));
    EXPECT_FALSE(Zel_MemoryIsString(pages.at(3 * kPage)));
    MEMORY_BASIC_INFORMATION region = {};
    ::VirtualQuery(pages.at(3 * kPage), &region, sizeof region);
    EXPECT_EQ(region.Protect, DWORD{PAGE_READWRITE | PAGE_GUARD});
}

TEST(MemoryProbe, RefusesAddressesThatAreNone) {
    EXPECT_FALSE(Zel_MemoryIsReadable(nullptr, 0));
    EXPECT_FALSE(Zel_MemoryIsReadable(nullptr, 1));
    EXPECT_FALSE(Zel_MemoryIsWriteable(nullptr, 0));
    char* const lowest = reinterpret_cast<char*>(std::uintptr_t{16});
    char* const highest = reinterpret_cast<char*>(~std::uintptr_t{0} - 15);
    for (char* const p : {lowest, highest}) {
        EXPECT_FALSE(Zel_MemoryIsReadable(p, 8));
        EXPECT_FALSE(Zel_MemoryIsReadable(p, 4096));  // wraps around at the highest
        EXPECT_FALSE(Zel_MemoryIsString(p));
    }
}

TEST(MemoryProbe, FindsTheEndOfTexts) {
    const Pages pages;
    EXPECT_TRUE(Zel_MemoryIsString(nullptr));  // relied on by callers
    EXPECT_TRUE(Zel_MemoryIsString("text"));
    EXPECT_TRUE(Zel_MemoryIsString(""));

    pages.fill(0);
    pages.fill(1);
    EXPECT_TRUE(Zel_MemoryIsString(pages.at(0))) << "ends in the read-only page behind";
    pages.fill(4);
    EXPECT_FALSE(Zel_MemoryIsString(pages.at(4 * kPage))) << "runs into a page without access";
    *pages.at(5 * kPage - 1) = '\0';
    EXPECT_TRUE(Zel_MemoryIsString(pages.at(4 * kPage))) << "its NUL is the last byte of a page";
    pages.fill(6);
    EXPECT_FALSE(Zel_MemoryIsString(pages.at(7 * kPage - 1))) << "runs into reserved memory";
}
