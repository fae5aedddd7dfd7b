// Internal errors without Windows, where there is no application either to show them.

#include "zbasic/ztrace.h"

void displayErrorMessage(const char*, unsigned) {}
