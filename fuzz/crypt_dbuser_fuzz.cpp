// The database user file. An input that begins with "T" is enciphered first, so that lines come
// out.

#include "input.h"
#include "zbasic/zcrypt.h"
#include "zbasic/zdbuser.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::string content(reinterpret_cast<const char*>(data), size);
    if (content.starts_with('T')) {
        const auto [digits, length] = ZelCryptoUtils::AESEncrypt(content.c_str());
        content.assign(digits, static_cast<std::size_t>(length));
        ZelCryptoUtils::Free(digits);
    }
    const MemoryFile file(content);
    ZelDBUserUtils user(file.path().c_str());
    ZelDBUserUtils copy(user);
    check(copy.IsExternalDefined());
    const SV::String name = copy.GetDBUserName("");
    const SV::String password = user.GetDBUserPassword("");
    check(name.size() + password.size() <= content.size() / 2);
    check(name.find('\n') == SV::String::npos && password.find('\n') == SV::String::npos);
    return 0;
}
