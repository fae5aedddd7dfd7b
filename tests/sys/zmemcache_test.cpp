#include "zbasic/zmemcache.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <random>
#include <vector>

namespace {

constexpr std::size_t kNew = static_cast<std::size_t>(-1);

struct ReuseCase {
    const char* why;
    std::vector<std::size_t> released;
    std::size_t request;
    std::size_t expected;  // index into `released`, or `kNew`
};

const ReuseCase kReuse[] = {
    {"nothing cached", {}, 32, kNew},
    {"the largest goes out, not the best fit", {16, 64, 256}, 32, 2},
    {"whatever the order of release", {64, 256, 16}, 32, 1},
    {"exactly large enough", {64}, 64, 0},
    {"the largest is too small", {16, 64, 256}, 300, kNew},
    {"nothing wanted", {16}, 0, 0},
    {"a block of no size", {0}, 0, 0},
    {"of equal ones the first released: later ones lie in front", {64, 64, 64}, 64, 0},
};

// A block handed out by `cache` that may be written to its last byte.
void* filled(ZelMemCache& cache, std::size_t size) {
    void* const data = cache.Alloc(size);
    EXPECT_NE(data, nullptr);
    EXPECT_EQ(reinterpret_cast<std::uintptr_t>(data) % 8, 0u);
    std::memset(data, 0xA5, size);
    return data;
}

// What the cache is meant to do, with blocks as numbers.
class Model {
public:
    struct Block {
        std::size_t capacity;
        void* data;
    };

    // Nothing: a new block.
    void* alloc(std::size_t size) {
        if (m_blocks.empty() || m_blocks.back().capacity < size) return nullptr;
        void* const data = m_blocks.back().data;
        m_blocks.pop_back();
        return data;
    }
    // By the rule for the place as it is written down, not as it is coded.
    void free(Block block) {
        if (m_blocks.size() >= 10) return;
        std::size_t low = 0;
        std::size_t high = m_blocks.size();
        while (high > low + 1) {
            const std::size_t middle = (low + high) / 2;
            (m_blocks[middle].capacity < block.capacity ? low : high) = middle;
        }
        if (!m_blocks.empty() && m_blocks[low].capacity < block.capacity) ++low;
        m_blocks.insert(m_blocks.begin() + static_cast<std::ptrdiff_t>(low), block);
    }

private:
    std::vector<Block> m_blocks;
};

// Sizes of all magnitudes from 0 to 1 MB; few enough different ones that some are equal.
std::size_t randomSize(std::mt19937& random) {
    const std::size_t limit = std::size_t{1} << (random() % 21);
    return std::min<std::size_t>(random() % (limit + 1), 1'000'000);
}

}  // namespace

TEST(MemCache, HandsOutTheLargestBlockThatIsLargeEnough) {
    for (const auto& [why, released, request, expected] : kReuse) {
        SCOPED_TRACE(why);
        ZelMemCache cache;
        std::vector<void*> blocks;
        for (const std::size_t size : released) blocks.push_back(filled(cache, size));
        for (void* const block : blocks) cache.Free(block);
        void* const got = filled(cache, request);
        const auto place = std::ranges::find(blocks, got);
        EXPECT_EQ(place - blocks.begin(),
                  static_cast<std::ptrdiff_t>(std::min(expected, blocks.size())));
        cache.Free(got);
    }
}

TEST(MemCache, RefusesSizesThatNoBlockCanHave) {
    ZelMemCache cache;
    for (std::size_t less = 1; less <= 8; ++less) EXPECT_EQ(cache.Alloc(0 - less), nullptr) << less;
    cache.Free(filled(cache, 8));  // and works on
}

TEST(MemCache, CopiesStartEmptyAndKeepWhatIsTheirs) {
    ZelMemCache cache;
    void* const block = filled(cache, 100);
    cache.Free(block);
    ZelMemCache copy(cache);
    void* const other = filled(copy, 50);
    EXPECT_NE(other, block);
    copy.Free(other);
    copy = cache;
    EXPECT_EQ(copy.Alloc(50), other);
    EXPECT_EQ(cache.Alloc(50), block);
    cache.Free(other);  // any cache takes it
    copy.Free(block);
}

TEST(MemCache, HasOneForTheProcess) { EXPECT_EQ(&ZelMemCache::General(), &ZelMemCache::General()); }

// Ten million operations, half of them each; a hundredth where sanitizers take 40 times as long.
TEST(MemCache, BehavesAsTheModelDoes) {
    constexpr int kSeeds = 10;
#ifdef _WIN32
    constexpr int kOperations = 1'000'000;
#else
    constexpr int kOperations = 10'000;
#endif
    for (unsigned seed = 1; seed <= kSeeds; ++seed) {
        std::mt19937 random(seed);
        ZelMemCache cache;
        Model model;
        std::vector<Model::Block> held;
        for (int i = 0; i < kOperations; ++i) {
            const bool isAlloc = held.empty() || (held.size() < 24 && random() % 2 == 0);
            if (isAlloc) {
                const std::size_t size = randomSize(random);
                void* const expected = model.alloc(size);
                auto* const data = static_cast<std::uint64_t*>(cache.Alloc(size));
                if (expected) {
                    ASSERT_EQ(data, expected) << "seed " << seed << ", operation " << i;
                }
                // What stands in front of the data is the capacity.
                const auto capacity = static_cast<std::size_t>(data[-1]);
                ASSERT_TRUE(expected ? capacity >= size : capacity == size);
                held.push_back({capacity, data});
            } else {
                std::swap(held[random() % held.size()], held.back());
                model.free(held.back());
                cache.Free(held.back().data);
                held.pop_back();
            }
        }
        for (const Model::Block& block : held) cache.Free(block.data);
    }
}
