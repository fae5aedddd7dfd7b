// The list of the languages of the user interface, "lang.ini".

#pragma once

#include <cstdio>
#include <functional>

// Calls `onEntry` for each line of the list that is neither empty nor a comment, with the number at
// its start, or 0 when there is none. A line has up to 100 bytes, its line feed included; what is
// longer counts as the next line.
void readLanguageList(std::FILE* list, const std::function<void(int id)>& onEntry);
