#include "hardening/allocation_paths.h"
#include "support/temp_dir.h"
#include "text/mlcontainer.h"

namespace {

// What `zelml` would write: one text, whose bytes are 0x5C apart from what they stand for.
std::string languageFile() {
    std::string file("\xE1\x05\xE1\x05\x00\x90\x03\x00\x1E\x00\x00\x00\x07\x00\x00\x00", 16);
    for (int i = 0; i < 30; ++i) file += static_cast<char>('a' ^ 0x5C);
    return file + std::string(4, '\0');
}

const std::vector<AllocationPath> kPaths = {
    {"texts of a language",
     [] {
         const auto folder = std::make_shared<TempDir>();
         const auto container = std::make_shared<ZelLanguageContainer>();
         return [folder, container, path = folder->write("f", languageFile())](Answer& answer) {
             std::vector<char> buffer;
             ZelMLResFileReader(container->table(1033), SV::String(path)).read(buffer);
             answer.add(container->text(7, 1033)).add(container->findId(std::string(30, 'a')));
         };
     },
     {kThrows}},
};

}  // namespace

const std::vector<AllocationPath>& platformPaths() { return kPaths; }

std::shared_ptr<void> placeForPaths() { return nullptr; }
