#include <cstdio>

#include "text/matchererror.h"

// There are no boxes here.
void showMatcherError(const SV::String& message) { std::fprintf(stderr, "%s\n", message.c_str()); }
