// Debug output of the sources without Windows: there is no debugger to send it to.

#include <cstdio>

#include "zbasic/ztrace.h"

void ZelDebugOut(const char* text) { std::fputs(text, stderr); }
