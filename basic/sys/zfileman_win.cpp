#include <string>

#include "sv/systemfunction.h"
#include "sys/zfileman_sys.h"

#include <windows.h>

#include <rpc.h>

namespace {

struct UuidFunctions {
    template <class Function>
    static Function* find(const char* name) {
        return SV::SystemFunction<Function>("rpcrt4.dll", name);
    }

    decltype(::UuidCreate)* create = find<decltype(::UuidCreate)>("UuidCreate");
    decltype(::UuidToStringA)* toText = find<decltype(::UuidToStringA)>("UuidToStringA");
    decltype(::RpcStringFreeA)* free = find<decltype(::RpcStringFreeA)>("RpcStringFreeA");

    explicit operator bool() const { return create && toText && free; }
};

}  // namespace

std::optional<SV::String> newUuidText() {
    static const UuidFunctions functions;
    if (!functions) return std::nullopt;
    UUID uuid = {};
    functions.create(&uuid);  // what it says is about where it is unique: here is enough
    RPC_CSTR text = nullptr;
    if (functions.toText(&uuid, &text) != RPC_S_OK) return std::nullopt;
    const SV::String copy(reinterpret_cast<const char*>(text));
    functions.free(&text);
    return copy;
}

SV::String lastSystemMessage() {
    const DWORD error = ::GetLastError();
    char text[512] = "";
    const DWORD size = ::FormatMessageA(
        FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS | FORMAT_MESSAGE_MAX_WIDTH_MASK,
        nullptr, error, 0, text, sizeof text, nullptr);
    std::string message(text, size);
    while (message.ends_with(' ') || message.ends_with('.')) message.pop_back();
    return message.empty() ? SV::String("system error " + std::to_string(error))
                           : SV::String(message);
}
