// What a script interpreter would define, as the tests' host and its plug-ins know it.

#pragma once

#include <string>

class ZelRyoParser {
public:
    int position = 0;
};

class ZelScriptResult {
public:
    std::string text;
};

class ZelMessage {
public:
    std::string text;
};
