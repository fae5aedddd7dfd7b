// What log files hold and what they are called.

#pragma once

#include <string>
#include <string_view>

#include "sv/datetime.h"
#include "sv/dir.h"

// What `printf` makes of `format` when there are no arguments: "%%" becomes "%", and a conversion
// ("% d", "%-8.*s", "%n") is left out, as there is nothing to convert and nowhere to write. What is
// no complete conversion ("%", "%y") is copied. Appends to `text`.
void appendWithoutArguments(std::string& text, std::string_view format);

// The file that a log of the day is kept in: "dir\server_2024.03.05.log" for "dir\server.log".
SV::DirEntry backupOf(const SV::DirEntry& log, const SV::Date& day);

// The pattern of those files: "dir\server_*.log".
SV::DirEntry backupPattern(const SV::DirEntry& log);
