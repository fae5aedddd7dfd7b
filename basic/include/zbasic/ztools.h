// Small helpers for texts, file names and export formats.

#pragma once

#include "sv/string.h"
#include "zbasic/zexport.h"

// All of them are stateless and may run on any thread.

// One field of a CSV line whose fields are separated by semicolons. A double quote
// is doubled, and a field with a double quote or a semicolon is put into double
// quotes; commas, line breaks and blanks do not matter.
//
//     a;b "c"  gives  "a;b ""c"""
ZBASIC_API SV::String Zel_MaskCSV(const SV::String& field);

// Whether the byte `c` may stand in XML that is made from text in the code page.
// - With `allowEuroByte`, 0x80 may, whatever follows here.
// - With `checkControlRange`, all bytes may, but of 0x7F to 0x9F only those that the
//   code page has a character above U+00FF for.
//   Relied on by callers: the control characters below 32 are not looked at then.
// - Without, all bytes may but those below 32 other than tab, line feed, carriage return.
//   Relied on by callers: the NUL byte may.
ZBASIC_API bool Zel_IsValidXMLChar(char c, bool allowEuroByte, bool checkControlRange);

// Whether `path` is well-formed; nothing is looked up on a disk. False for
// - null, an empty path, a URL ("://");
// - a UNC path other than "\\server\share\" with more behind it; a "/" may end the
//   share's name but not the server's;
// - a device name (CON, PRN, AUX, CLOCK$, NUL, COM1 to COM9, LPT1 to LPT9), alone or with
//   an extension, at the very start of the path or behind the share;
// - one of | " * < > ? in it, two separators in a row, a ":" that is not the first
//   one or not behind an ASCII letter, any ":" in a UNC path;
// - a separator or ":" at its end.
// Relied on by callers: control characters are not rejected.
ZBASIC_API bool Zel_Valid_Filename(const char* path);

// Whether `path` names a file that is kept in the database: it begins with "DB:\", in
// whatever case.
ZBASIC_API bool Zel_Valid_DBFilename(const char* path);

// Whether the file can be opened for reading; false for a file kept in the database.
ZBASIC_API bool Zel_FileExists(const char* path);

// The directory of the program file as a full path.
ZBASIC_API SV::String Zel_GetProgramPath(bool withSeparator);

// The path of a file in that directory. An absolute `name` (a leading separator, or a
// drive with one) and one that `Zel_Valid_Filename` rejects are returned as they are.
ZBASIC_API SV::String Zel_GetProgramPathFilename(const SV::String& name);
