// The readable form of a multi-language string file.

#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

// A source is UTF-8, with or without a byte order mark, lines ending in LF or CR LF:
//
//     # a comment; empty lines are fine as well
//     7 = "Datei"          # behind a text too
//     8 = "Zeile\n\"Zitat\"\x99"
//
// Ids are decimal, 1 to 65535, each once. Escapes: \n \r \t \" \\ and \xHH for any
// byte of the code page.
struct SourceText {
    std::uint16_t id;
    std::string text;  // code page 1252
};

struct SourceError {
    std::size_t line;  // from 1
    std::string message;
};

struct Source {
    std::vector<SourceText> texts;    // in the order of the source
    std::vector<SourceError> errors;  // all of them, in that order too
};

Source parseSource(std::string_view content);

// A line of a source, without the line end. Parsing it gives the same bytes.
std::string sourceLine(std::uint16_t id, std::string_view text);
