// Asking for a password.

#pragma once

#include <string>

// The password without a line end: what is typed on a console, not shown and asked for twice, or
// all of standard input when that is redirected. False, with the reason, when there is none or the
// two differ. The text is reserved once, so that no copy of it stays behind.
bool readPassword(std::string& password, std::string& reason);

// Overwrites the text before its memory is released.
void forget(std::string& text);
