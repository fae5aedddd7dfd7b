// Boxes that tell something.

#pragma once

#include "sv/string.h"
#include "texts.h"

namespace zelhost {

// Where boxes are suppressed nothing is shown.
void showBox(const SV::String& caption, const SV::String& text);
void showBox(Text title, const SV::String& text);
void showProblem(const SV::String& text);

}  // namespace zelhost
