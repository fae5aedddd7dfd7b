// Whole files and the output, as every tool reads and writes them.

#pragma once

#include <string>
#include <string_view>

// False, with the system's reason in `reason`, when the file cannot be read.
bool loadFile(const std::string& path, std::string& content, std::string& reason);

// Writes beside the target and moves the complete file into its place, so that
// a target of that name is either the old file or the new one.
bool saveFile(const std::string& path, std::string_view content, std::string& reason);

// Hands over what was printed; false, behind a message, when not all of it could be written.
bool finishOutput();
