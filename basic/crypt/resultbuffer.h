// The buffers that callers release.

#pragma once

#include <cstddef>
#include <cstdlib>
#include <limits>
#include <memory>
#include <utility>

// The longest result whose length can be told.
constexpr std::size_t kMaxResult = std::numeric_limits<int>::max();

constexpr int kFailed = -1;
constexpr int kInvalidArgument = -2;

struct FreeBuffer {
    void operator()(void* buffer) const { std::free(buffer); }
};
template <class Byte>
using ResultBuffer = std::unique_ptr<Byte[], FreeBuffer>;

// Room for `size` bytes and a NUL; null when there is none, and for more than `kMaxResult`.
template <class Byte>
ResultBuffer<Byte> allocateResult(std::size_t size) {
    if (size > kMaxResult) return nullptr;
    return ResultBuffer<Byte>(static_cast<Byte*>(std::malloc(size + 1)));
}

template <class Byte>
using Result = std::pair<Byte*, int>;

template <class Byte>
Result<Byte> failure(int reason) {
    return {nullptr, reason};
}

template <class Byte>
Result<Byte> success(ResultBuffer<Byte>& buffer, std::size_t size) {
    return {buffer.release(), static_cast<int>(size)};
}
