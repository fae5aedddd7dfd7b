// Owners of what the system hands out.

#pragma once

#include <utility>

#include <windows.h>

// Closes the handle that it holds. `Kind` says what the handle is, what "none" is, and how it is
// closed; closing leaves the thread's last error as it was.
template <typename Kind>
class WinOwner {
public:
    using Handle = typename Kind::Handle;

    WinOwner() = default;
    explicit WinOwner(Handle handle) : m_handle(handle) {}
    WinOwner(WinOwner&& other) noexcept : m_handle(other.release()) {}
    WinOwner& operator=(WinOwner&& other) noexcept {
        if (this != &other) reset(other.release());
        return *this;
    }
    ~WinOwner() { reset(); }

    Handle get() const { return m_handle; }
    explicit operator bool() const { return m_handle != Kind::none(); }
    Handle release() { return std::exchange(m_handle, Kind::none()); }
    void reset(Handle handle = Kind::none()) {
        const Handle old = std::exchange(m_handle, handle);
        if (old == Kind::none()) return;
        const DWORD error = ::GetLastError();
        Kind::close(old);
        ::SetLastError(error);
    }

private:
    Handle m_handle = Kind::none();
};

struct FileKind {  // CreateFile says "none" with -1, most others say it with null
    using Handle = HANDLE;
    static Handle none() { return INVALID_HANDLE_VALUE; }
    static void close(Handle file) { ::CloseHandle(file); }
};
using WinFile = WinOwner<FileKind>;

struct ModuleKind {
    using Handle = HMODULE;
    static Handle none() { return nullptr; }
    static void close(Handle module) { ::FreeLibrary(module); }
};
using WinModule = WinOwner<ModuleKind>;
