// Answers what the system's IsBad... functions answer, without touching the memory: those end
// the process on a guard page, and can spoil another thread's stack.

#include <cstdint>
#include <cstring>

#include "zbasic/ztrace.h"

#include <windows.h>

namespace {

enum class Access { kRead, kReadWrite };

bool isWritable(DWORD protection) {
    switch (protection & 0xFF) {  // the rest says how it is cached
        case PAGE_READWRITE:
        case PAGE_WRITECOPY:
        case PAGE_EXECUTE_READWRITE:
        case PAGE_EXECUTE_WRITECOPY:
            return true;
        default:
            return false;
    }
}

// The first address behind the region that holds `address`; 0 when the access is not allowed.
std::uintptr_t accessibleUpTo(std::uintptr_t address, Access access) {
    MEMORY_BASIC_INFORMATION region = {};
    if (!::VirtualQuery(reinterpret_cast<const void*>(address), &region, sizeof region)) return 0;
    if (region.State != MEM_COMMIT) return 0;
    if (region.Protect & (PAGE_NOACCESS | PAGE_GUARD)) return 0;
    if (access == Access::kReadWrite && !isWritable(region.Protect)) return 0;
    return reinterpret_cast<std::uintptr_t>(region.BaseAddress) + region.RegionSize;
}

bool isAccessible(const void* p, unsigned size, Access access) {
    if (!p) return false;
    std::uintptr_t address = reinterpret_cast<std::uintptr_t>(p);
    if (address + size < address) return false;
    const std::uintptr_t end = address + size;
    while (address < end) {
        address = accessibleUpTo(address, access);
        if (!address) return false;
    }
    return true;
}

}  // namespace

bool Zel_MemoryIsReadable(const void* p, unsigned size) {
    return isAccessible(p, size, Access::kRead);
}

bool Zel_MemoryIsWriteable(void* p, unsigned size) {
    return isAccessible(p, size, Access::kReadWrite);
}

bool Zel_MemoryIsString(const char* p) {
    if (!p) return true;  // Relied on by callers: null counts as a valid text.
    std::uintptr_t address = reinterpret_cast<std::uintptr_t>(p);
    while (const std::uintptr_t end = accessibleUpTo(address, Access::kRead)) {
        if (std::memchr(reinterpret_cast<const void*>(address), 0, end - address)) return true;
        address = end;
    }
    return false;
}
