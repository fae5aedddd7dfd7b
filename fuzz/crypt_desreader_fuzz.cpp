// A file of DES blocks: eight bytes of key, then the file. Written again it is the same.

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>

#include "zbasic/zdes.h"

namespace {

struct CloseFile {
    void operator()(std::FILE* file) const { std::fclose(file); }
};
using File = std::unique_ptr<std::FILE, CloseFile>;

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size < 9) return 0;
    des_ctx schedule;
    ades_key(&schedule, data);
    std::string content(reinterpret_cast<const char*>(data + 8), size - 8);
    const File file(::fmemopen(content.data(), content.size(), "rb"));
    std::string again(content.size() + 1, '\0');
    const File copy(::fmemopen(again.data(), again.size(), "wb"));
    des_reader reader(file.get(), &schedule);
    des_writer writer(copy.get(), &schedule);
    std::size_t count = 0;
    for (int byte; (byte = reader.get()) != -1; ++count) {
        if (byte < 0 || byte > 255 || writer.put(static_cast<unsigned char>(byte)) != 0)
            std::abort();
    }
    if (count != content.size() / 8 * 8 || writer.flush() != 0) std::abort();
    if (std::memcmp(again.data(), content.data(), count) != 0) std::abort();
    return 0;
}
