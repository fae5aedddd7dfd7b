// The C++ operators are replaced for the whole program, the C functions where our objects call
// them (by the linker, see native/CMakeLists.txt) and where libcrypto does.

#include <openssl/crypto.h>

#include <cstdlib>
#include <new>

#include "hardening/failing_allocation.h"

extern "C" {

void* __real_malloc(std::size_t size);
void* __real_calloc(std::size_t count, std::size_t size);
void* __real_realloc(void* block, std::size_t size);

void* __wrap_malloc(std::size_t size) {
    return isAllocationToFail() ? nullptr : __real_malloc(size);
}

void* __wrap_calloc(std::size_t count, std::size_t size) {
    return isAllocationToFail() ? nullptr : __real_calloc(count, size);
}

void* __wrap_realloc(void* block, std::size_t size) {
    return isAllocationToFail() ? nullptr : __real_realloc(block, size);
}

}  // extern "C"

namespace {

// Libcrypto takes its functions before its first allocation only.
const bool g_isLibcryptoWatched =
    CRYPTO_set_mem_functions(
        [](std::size_t size, const char*, int) { return __wrap_malloc(size); },
        [](void* block, std::size_t size, const char*, int) { return __wrap_realloc(block, size); },
        [](void* block, const char*, int) { std::free(block); }) == 1;

void* allocateOrThrow(std::size_t size) {
    void* const block = __wrap_malloc(size);
    if (!block) throw std::bad_alloc();
    return block;
}

}  // namespace

void* operator new(std::size_t size) { return allocateOrThrow(size); }
void* operator new[](std::size_t size) { return allocateOrThrow(size); }
void* operator new(std::size_t size, const std::nothrow_t&) noexcept { return __wrap_malloc(size); }
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept {
    return __wrap_malloc(size);
}
void operator delete(void* block) noexcept { std::free(block); }
void operator delete[](void* block) noexcept { std::free(block); }
void operator delete(void* block, std::size_t) noexcept { std::free(block); }
void operator delete[](void* block, std::size_t) noexcept { std::free(block); }

std::shared_ptr<void> watchAllocations() {
    if (!g_isLibcryptoWatched) std::abort();
    return nullptr;
}

long liveBlocks() { return 0; }
