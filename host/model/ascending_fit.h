// Places in a row as near as can be to where they are wanted.

#pragma once

#include <cstddef>
#include <vector>

namespace zelhost {

// Ascending values that lie as near to the wishes as can be: the sum of the weighted squares of
// the distances is least. Wishes that do not ascend share their mean.
class AscendingFit {
public:
    void clear() { m_pools.clear(); }

    void add(double wish, double weight) {
        Pool pool{wish, weight, 1};
        while (!m_pools.empty() && m_pools.back().mean > pool.mean) {
            const Pool& before = m_pools.back();
            const double sum = before.weight + pool.weight;
            pool.mean = (before.mean * before.weight + pool.mean * pool.weight) / sum;
            pool.weight = sum;
            pool.count += before.count;
            m_pools.pop_back();
        }
        m_pools.push_back(pool);
    }

    // Calls `take` with the value of each wish.
    template <typename Take>
    void giveTo(Take take) const {
        for (const Pool& pool : m_pools) {
            for (std::size_t i = 0; i < pool.count; ++i) take(pool.mean);
        }
    }

private:
    struct Pool {
        double mean;
        double weight;
        std::size_t count;
    };

    std::vector<Pool> m_pools;
};

}  // namespace zelhost
