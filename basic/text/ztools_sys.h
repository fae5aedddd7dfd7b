// What the text helpers ask of the system.

#pragma once

// The UTF-16 unit that the byte is in the process code page.
char16_t codePageCharacter(char byte);
