// The texts that come with the library, in each of their languages.

#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <vector>

#include "support/child.h"
#include "sv/resource.h"

namespace {

const char* const kFiles[] = {"language\\1033\\zbasic18.dll", "language\\1031\\zbasic18.dll",
                              "zbasic18.dll"};

std::string textOf(const SV::ResMgr& file, std::uint32_t number) {
    SV::String text;
    EXPECT_TRUE(file.FindString(number, text)) << number;
    return text.c_str();
}

struct Range {
    std::uint32_t first;
    std::uint32_t last;
};

const Range kNumbers[] = {
    {950, 951},     {960, 971},     {3346, 3346},   {3352, 3352},   {10507, 10507}, {10515, 10516},
    {10530, 10532}, {10535, 10535}, {11134, 11134}, {11764, 11764}, {25100, 25118},
};

}  // namespace

TEST(Texts, AreThereInEveryLanguage) {
    for (const char* name : kFiles) {
        SCOPED_TRACE(name);
        const SV::ResMgr file(name);
        ASSERT_TRUE(file.IsLoaded());
        for (const auto& [first, last] : kNumbers) {
            for (std::uint32_t number = first; number <= last; ++number) {
                const std::string text = textOf(file, number);
                const bool hasPlace = number == 960 || number == 11134;
                const std::size_t place = text.find('%');
                EXPECT_EQ(place, hasPlace ? text.find("%s") : std::string::npos) << text;
                EXPECT_EQ(text.find('%', place == std::string::npos ? place : place + 1),
                          std::string::npos)
                    << text;
                EXPECT_EQ(text.find('?'), number == 971 ? text.find(", +, ?") + 5 : text.npos)
                    << "a character that the code page lacks: " << text;
            }
        }
    }
}

TEST(Texts, SpeakTheirLanguage) {
    const SV::ResMgr english(kFiles[0]), german(kFiles[1]), own(kFiles[2]);
    EXPECT_EQ(textOf(english, 25102), "March");
    EXPECT_EQ(textOf(german, 25102), "M\xE4rz");
    EXPECT_EQ(textOf(own, 25102), "March");
    EXPECT_EQ(textOf(english, 25118), "Sunday");
    EXPECT_EQ(textOf(german, 25112), "Montag");
}

struct EntityCase {
    unsigned char byte;
    const char* entity;
};

// From the tables of code page 1252 and of the entities of ISO 8879 and HTML 4.
const EntityCase kEntities[] = {
    {0x80, "&euro;"},  {0x81, "0"},       {0x8D, "0"},        {0x8F, "0"},        {0x90, "0"},
    {0x91, "&lsquo;"}, {0x99, "&trade;"}, {0x9D, "0"},        {0x9E, "&zcaron;"}, {0x9F, "&Yuml;"},
    {0xA0, "&nbsp;"},  {0xA7, "&sect;"},  {0xB5, "&micro;"},  {0xBF, "&iquest;"}, {0xC4, "&Auml;"},
    {0xD7, "&times;"}, {0xDF, "&szlig;"}, {0xE9, "&eacute;"}, {0xF7, "&divide;"}, {0xFF, "&yuml;"},
};

TEST(Texts, NameAnEntityForEachByteOfTheUpperHalf) {
    for (const char* name : kFiles) {
        SCOPED_TRACE(name);
        std::istringstream stream(textOf(SV::ResMgr(name), 11764));
        std::vector<std::string> entities;
        for (std::string entity; stream >> entity;) entities.push_back(entity);
        ASSERT_EQ(entities.size(), 128u);
        for (const auto& [byte, entity] : kEntities) EXPECT_EQ(entities[byte - 128u], entity);
    }
}
