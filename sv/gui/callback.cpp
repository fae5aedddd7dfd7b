#include "callback.h"

#include <exception>
#include <utility>

#include <windows.h>

namespace SV {

namespace {

std::exception_ptr g_kept;

}  // namespace

void keepException() noexcept {
    if (!g_kept) g_kept = std::current_exception();
    // A message that was sent does not end the loop's wait.
    ::PostThreadMessageA(::GetCurrentThreadId(), WM_NULL, 0, 0);
}

void finishMessage(const MSG& message, bool isTaken) {
    if (!isTaken) {
        ::TranslateMessage(&message);
        ::DispatchMessageA(&message);
    }
    if (g_kept) std::rethrow_exception(std::exchange(g_kept, nullptr));
}

}  // namespace SV
