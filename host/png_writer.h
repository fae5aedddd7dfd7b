// Pictures as PNG files.

#pragma once

#include "model/text_output.h"
#include "sv/image.h"

namespace zelhost {

// Writes `image` without transparency; false when something could not be written.
bool writePng(const SV::Image& image, const WriteChunk& write);

}  // namespace zelhost
