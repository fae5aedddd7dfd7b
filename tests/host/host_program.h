// The sample host as a program, for tests that see it as a user does.

#pragma once

#include <string>
#include <vector>

#include "support/child.h"

// Two nodes and an edge. The captions hold what CSV must quote, and a character that is not in
// the code page.
extern const char kSmallModel[];

// Large enough for its export to take many times as long as the program lets messages wait.
std::string largeModel();

std::string hostProgram();

// Runs it in `directory` without windows.
ChildResult runHost(const std::string& directory, std::vector<std::string> arguments);

// What it says on standard error but for its progress, of which a busy machine shows more.
std::string withoutProgress(const std::string& err);

// The names of all files in `directory` and below, as "sub\name", sorted.
std::vector<std::string> filesIn(const std::string& directory);

// The five files of one model, sorted.
std::vector<std::string> exportsOf(const std::string& name);
