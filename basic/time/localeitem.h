// Items of any Windows locale.

#pragma once

#include "sv/string.h"

// The text of an item (LOCALE_…) of a locale, in the process code page; empty
// when the system does not supply it.
SV::String localeItem(unsigned long locale, unsigned long item);
