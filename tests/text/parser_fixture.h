// What the tests of the text reader and of the parser need.

#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <clocale>
#include <memory>
#include <string>

#include "support/temp_dir.h"
#include "zbasic/ztextparser.h"

inline constexpr std::size_t kBlockSize = 8192;  // of the reader

// `size` bytes in lines of at most `width` bytes, the last byte a line feed.
inline std::string filler(std::size_t size, std::size_t width = 100) {
    std::string text;
    while (text.size() < size) {
        const std::size_t line = std::min(width, size - text.size());
        text.append(line - 1, 'f').push_back('\n');
    }
    return text;
}

class TextParser : public ::testing::Test {
protected:
    std::unique_ptr<ZelTextParser> parserOf(const std::string& text, int flags = 0) {
        const std::string path = m_dir.write("text" + std::to_string(++m_files), text);
        return std::make_unique<ZelTextParser>(new ZelTextFileReader(SV::String(path)), flags);
    }

private:
    TempDir m_dir;
    int m_files = 0;
};

// Another classification of characters for as long as it lives.
class CharacterLocale {
public:
    explicit CharacterLocale(const char* name) : m_before(std::setlocale(LC_CTYPE, nullptr)) {
        EXPECT_TRUE(std::setlocale(LC_CTYPE, name)) << name;
    }
    CharacterLocale(const CharacterLocale&) = delete;
    CharacterLocale& operator=(const CharacterLocale&) = delete;
    ~CharacterLocale() { std::setlocale(LC_CTYPE, m_before.c_str()); }

private:
    const std::string m_before;
};

inline constexpr char kGerman[] = "German_Germany.1252";
