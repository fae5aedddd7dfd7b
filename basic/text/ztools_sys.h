// What the text helpers ask of the system.

#pragma once

#include "sv/string.h"

// The directory of the program file, a separator at its end.
SV::String programDirectory();

// The UTF-16 unit that the byte is in the process code page.
char16_t codePageCharacter(char byte);
