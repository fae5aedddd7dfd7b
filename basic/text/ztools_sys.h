// What the text helpers ask of the system.

#pragma once

// The UTF-16 unit that the byte is in the process code page.
char16_t codePageCharacter(char byte);

// By the process code page.
bool isLetter(char c);
bool isUpperLetter(char c);

enum class Order { kFailed, kLess, kEqual, kGreater };
// Of two texts that differ in more than case, as the user's locale sorts.
Order orderIgnoringCase(const char* a, const char* b);

// The first character of the user locale's decimal separator.
char decimalSeparator();
