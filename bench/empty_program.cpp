// What a program costs that does nothing but load both DLLs.

#include "sv/string.h"
#include "zbasic/zversion.h"

int main() {
    // One use of each, so that the linker keeps them.
    return SV::String(Zel_GetVersionString()) == "1.8" ? 0 : 1;
}
