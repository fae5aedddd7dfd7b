// Texts to read, the same in every run.

#pragma once

#include <cstddef>
#include <string>

enum class SampleKind { kModel, kHeader };

// The path of a file of that kind and size, written on first use and removed at exit.
const std::string& sampleFile(SampleKind kind, std::size_t size);
