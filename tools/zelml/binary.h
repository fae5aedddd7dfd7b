// The multi-language string file as bytes.

#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "source.h"

std::string makeFile(const std::vector<SourceText>& texts);

struct FileFault {
    std::size_t offset;  // in bytes
    std::string message;
};

struct FileContent {
    std::vector<SourceText> texts;  // what the library would read of the file
    std::vector<FileFault> faults;  // where it differs from what `makeFile` makes
};

FileContent readFile(std::string_view bytes);
