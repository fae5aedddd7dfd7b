// Comparing text the way the user's locale does.

#pragma once

#include <string_view>

// Whether the two differ in nothing or in case alone.
bool isEqualIgnoringCase(std::string_view a, std::string_view b);
