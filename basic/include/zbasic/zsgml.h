// Model text for SGML and XML export files.

#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <iosfwd>
#include <string_view>

#include "sv/string.h"
#include "zbasic/zexport.h"

// What is being exported. Callers have more values; only XML makes a difference here.
enum ZelExportFileType : std::int32_t { kExportFileTypeXml = 1 };

// Text in the code page that is inserted into a stream as SGML or XML.
//
// SGML goes through a character map of the process: an entity reference per byte, or
// none to copy the byte. XML follows fixed rules and is UTF-8.
//
// Threads: any number may convert text at a time. Map, warnings and export file type are the
// process's and must not be set meanwhile. The first conversion loads the map if
// `SetCharacterMap` has not; several may be the first.
class ZBASIC_API ZelSGMLString {
public:
    // A copy of the text; null is empty.
    ZelSGMLString(const char* text);
    ZelSGMLString(const SV::String& text);

    // As values: only the text belongs to the object.
    ZelSGMLString(const ZelSGMLString&);
    ZelSGMLString(ZelSGMLString&&) noexcept;
    ZelSGMLString& operator=(const ZelSGMLString&);
    ZelSGMLString& operator=(ZelSGMLString&&) noexcept;
    ~ZelSGMLString();

    // Loads the map from a mapping file, or the built-in one when `mapping` is null. False
    // when the file was rejected; the built-in map is loaded then, too.
    //
    // The file has a line "MAP128" or "MAP256" (without it: 128), a line with the name of
    // its language, and a line with the entity for each byte from 128 or 0 to 255, "0" for
    // none:
    //
    //     MAP128
    //     English // a comment
    //     &euro;
    //     0
    //
    // Blanks are removed wherever they stand, then "//" and all behind it; a tab is no
    // blank. Empty lines do not count. Of a line at most 1000 bytes are looked at.
    // With MAP128 the built-in entities of ", &, < and > stay. The file must describe
    // exactly 128 or 256 bytes; with warnings off MAP256 may describe any number.
    //
    // Relied on by callers: a rejected MAP256 file leaves the built-in entities, which are
    // meant for the bytes from 128 on, at the bytes from 0 on, and nothing else.
    static bool SetCharacterMap(std::istream* mapping);

    // The language of the map; "DEFAULT" for the built-in one, "" before any was loaded.
    // Valid until the next `SetCharacterMap`.
    static const char* GetLanguage();

    static void SetExportFileType(ZelExportFileType type);  // 0 at first, which is not XML
    static void EnableWarning(bool isEnabled);              // on at first

    // The text through the map. Carriage returns are dropped.
    static SV::String GetSGMLString(const SV::String& text);

    // The text as XML character data in UTF-8, also for attribute values: <, >, & and the
    // double quote become references, tab, line feed and carriage return become "&#9;",
    // "&#10;" and "&#13;", the byte 0x80 becomes "&#8364;". Dropped are the other bytes below 32
    // and, with `checkControlRange`, those of 0x7F to 0x9F without a character (see
    // `Zel_IsValidXMLChar`).
    static SV::String XMLStr(const SV::String& text, bool checkControlRange);

    friend ZBASIC_API std::ostream& operator<<(std::ostream& stream, const ZelSGMLString& text);

private:
    static bool __initCharMap(std::istream* mapping);
    static bool ReadSGMLMapping(std::istream& mapping, SV::String& entities);
    static void __createSub128Mapping();
    static std::size_t __getConvertedLen(const SV::String& text, bool& converted);
    static void __convertToBuf(const SV::String& text, char* buffer);
    static void assignEntities(std::string_view entities);

    static SV::String g_aEntities[256];  // empty: the byte is copied
    static std::atomic<bool> g_bInitedCharMap;
    static std::int32_t g_nMappingStartOffset;  // of the mapping file's first entity: 128 or 0
    static SV::String g_sLanguage;
    static bool g_bWarn;
    static ZelExportFileType g_eCurExportFileType;

    SV::String m_text;
};

// Inserts `ZelSGMLString::XMLStr` of the text, with the check, when the export file type is XML,
// else `ZelSGMLString::GetSGMLString` of it.
ZBASIC_API std::ostream& operator<<(std::ostream& stream, const ZelSGMLString& text);
