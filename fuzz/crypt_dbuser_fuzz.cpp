// The database user file. An input that begins with "T" is enciphered first, so that lines come
// out.

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>

#include <unistd.h>

#include "zbasic/zcrypt.h"
#include "zbasic/zdbuser.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const std::string path =
        std::filesystem::temp_directory_path() / ("dbuser_fuzz_" + std::to_string(::getpid()));
    std::string content(reinterpret_cast<const char*>(data), size);
    if (content.starts_with('T')) {
        const auto [digits, length] = ZelCryptoUtils::AESEncrypt(content.c_str());
        content.assign(digits, static_cast<std::size_t>(length));
        ZelCryptoUtils::Free(digits);
    }
    std::FILE* const file = std::fopen(path.c_str(), "wb");
    std::fwrite(content.data(), 1, content.size(), file);
    std::fclose(file);
    {
        ZelDBUserUtils user(path.c_str());
        ZelDBUserUtils copy(user);
        if (!copy.IsExternalDefined()) std::abort();
        const SV::String name = copy.GetDBUserName("");
        const SV::String password = user.GetDBUserPassword("");
        if (name.size() + password.size() > content.size() / 2) std::abort();
        if (name.find('\n') != SV::String::npos || password.find('\n') != SV::String::npos) {
            std::abort();
        }
    }
    std::remove(path.c_str());
    return 0;
}
