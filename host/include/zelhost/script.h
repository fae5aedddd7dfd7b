// What zelhost and its script plug-ins know of each other: the classes behind the names that the
// plug-in interface passes through. All texts are in the process code page.

#pragma once

#include <algorithm>
#include <cstddef>
#include <string_view>

#include "sv/string.h"

// What stands behind the command of a request, word by word.
class ZelRyoParser {
public:
    // The text must live as long as the parser.
    explicit ZelRyoParser(std::string_view text) : m_rest(text) {}

    // The next word, without blanks and tabs; empty when there is none.
    SV::String next() {
        const std::string_view blanks = " \t";
        m_rest.remove_prefix(std::min(m_rest.find_first_not_of(blanks), m_rest.size()));
        const std::size_t size = std::min(m_rest.find_first_of(blanks), m_rest.size());
        SV::String word(m_rest.substr(0, size));
        m_rest.remove_prefix(size);
        return word;
    }

private:
    std::string_view m_rest;
};

// What a command answers: lines that end in "\n", but for the last one.
class ZelScriptResult {
public:
    // The whole answer; empty at first.
    void setText(const SV::String& text) { m_text = text; }
    const SV::String& getText() const { return m_text; }

private:
    SV::String m_text;
};

// A request that comes by a message port; the plug-in puts its answer into `result`.
class ZelMessage {
public:
    ZelScriptResult result;  // empty when it comes
};

// The receiver of this far call answers with a model as GML, laid out as zelhost exports it. It is
// asked with the name of an open model; with no bytes it means the model of the moment: the one
// that a command of the command line is run for, else that of the active window. Empty when there
// is none.
inline constexpr char kZelhostModelCall[] = "zelhost.model";
