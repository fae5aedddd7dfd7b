// Small helpers for texts, numbers, names, file names and export formats.

#pragma once

#include <cstddef>
#include <cstdint>

#include "sv/string.h"
#include "zbasic/zexport.h"
#include "zbasic/zsequence.h"

// All of them may run on any thread, and but for the error texts at the end none keeps anything.
// None switches the locale of the process. Text is 8-bit, in the process code page; a null
// `const char*` counts as an empty text where nothing else is said. Failures are reported by
// `displayErrorMessage` under "ztools" and a number; the work goes on afterwards.

// -- Escaping

// Puts `escape` before every `special` and every `escape`.
//
//     a|b\c  with "|" and "\"  gives  a\|b\\c
ZBASIC_API SV::String Zel_Mask(const char* text, char special, char escape);

// Drops every `escape` and takes the character behind it as it is, so that it undoes `Zel_Mask`. An
// escape at the very end is dropped as well.
ZBASIC_API SV::String Zel_Unmask(const char* text, char escape);

// One field of a CSV line whose fields are separated by semicolons. A double quote
// is doubled, and a field with a double quote or a semicolon is put into double
// quotes; commas, line breaks and blanks do not matter.
//
//     a;b "c"  gives  "a;b ""c"""
ZBASIC_API SV::String Zel_MaskCSV(const SV::String& field);

// The escapes of the export grammar: a backslash before every backslash and every delimiter, which
// is ">" in names, the double quote in values and "/" in paths. A line feed in a name becomes a
// blank, and each is reported (1370).
//
// `dst` has room for the text, a backslash for each of these and a NUL, and does not overlap `src`.
// Relied on by callers: memory there that is known not to be writable is reported (1358) and
// written to all the same.
ZBASIC_API void Zel_Mask_Export_Name(const char* src, char* dst);
ZBASIC_API void Zel_Mask_Export_Value(const char* src, char* dst);
ZBASIC_API void Zel_Mask_Export_Path(const char* src, char* dst);

// -- Splitting, single characters, names

// Makes `tokens` what stands between the separators: one token more than there are separators,
// empty ones included, and so an empty one for an empty text. There is no quoting. Separators are
// sought from the start, each behind the last one. Without a separator (null, empty, the NUL
// character) there are no tokens. `text` may be an element of `tokens`.
//
//     a;;b  with ";"  gives  "a", "", "b"
ZBASIC_API void Zel_SplitIntoTokens(const SV::String& text, const char* separator,
                                    ISequence<SV::String>& tokens);
ZBASIC_API void Zel_SplitIntoTokens(const SV::String& text, char separator,
                                    ISequence<SV::String>& tokens);

// `out` becomes the text up to the first `stop`, with it; all of it when there is none.
ZBASIC_API void zel_getuntil(const char* text, char stop, SV::String& out);

// How often the byte `c` stands in the text; 0 for NUL, which is its end.
ZBASIC_API int zel_charcount(const char* text, char c);

// Replaces every byte `from` by `to`, in place. Bytes that stay the same are not written; null is
// passed over.
ZBASIC_API void zel_charreplace(char* text, char from, char to);

// The name's next variant: the number in the parentheses at its end plus one, or " (2)" appended
// when there are none. What `atoi` reads as no number counts as 0, and so does one beyond 63 bits.
//
//     Model, Model (2), Model (3); f(x), f(1)
ZBASIC_API void Zel_MakeNextName(SV::String& name);

// The expression in parentheses. One that is enclosed already, blanks (tab, line feed, carriage
// return, space) around it aside, is returned as it is.
//
//     a+b  gives  (a+b);  (a) and  (a)  stays;  (a)(b)  gives  ((a)(b))
ZBASIC_API SV::String Zel_EnsureSurroundingParentheses(const SV::String& expression);

// -- Numbers

// The number at the start of the text, as `strtod` reads it in the "C" locale (white space, a
// sign, an exponent, hexadecimal, "inf", "nan"), but with "," for "." as well; there is no grouping
// of digits. Correctly rounded; 0 when there is no number or `text` is null, infinity beyond the
// range.
//
//     1,5  and  1.5  give  1.5;  1,234.5  gives  1.234
ZBASIC_API double zel_atof(const char* text);

// `value` in fixed-point notation with ".", correctly rounded to `decimals` (exactly half goes to
// the even digit; 6 decimals when negative) as `printf` does with "%.*f", "inf" and "nan" included.
// The text is cut after 511 characters. Then zeros at the end of the decimals go:
// - `zel_ftoa_no_locale`: all of them, and the "." when nothing is behind it;
// - `zel_ftoa_period`: but for the first decimal.
// Without decimals there is neither a "." nor anything to remove. A zero keeps its sign.
//
//     2.5 to 3 decimals  gives  2.5 and 2.5;  2.0  gives  2 and 2.0
ZBASIC_API SV::String zel_ftoa_no_locale(double value, int decimals);
ZBASIC_API SV::String zel_ftoa_period(double value, int decimals);

// Writes `value` and a NUL into `buffer`, as `sprintf` does with that format; gives the count of
// characters. The format may hold one conversion: d, i, u, o, x or X, with flags, width and
// precision as digits, with or without an "l". With any other or a second one, nothing is written
// but the NUL. A buffer that is known not to be writable is reported (1289) and left alone.
ZBASIC_API int zel_ltoa(long value, char* buffer, const char* format);

// -- Order

// -1, 0 or 1 by the order of lists: ignoring case as the user's locale has it, and among equals by
// the first letter that differs in case, the upper-case one being first. Letters are those of the
// code page.
//
//     ABC, abc, ABD
//
// Relied on by callers: a comparison that the system cannot make, as of a null text, is reported
// (122) and gives 1 here, and false from the two below.
ZBASIC_API int zel_lexcmp(const char* a, const char* b);

// Whether `a` comes behind `b`; behind or beside `b`. Up to the first NUL.
ZBASIC_API bool Zel_IsLexGreater(const SV::String& a, const SV::String& b);
ZBASIC_API bool Zel_IsLexGreaterEqual(const SV::String& a, const SV::String& b);

// -- Syntax

// Whether `text` is decimal digits behind an optional sign.
// Relied on by callers: a sign alone will do.
ZBASIC_API bool Zel_Valid_Integer(const char* text);

// Whether `text` is decimal digits, at least one, behind an optional sign, with at most one decimal
// separator in any place: "." or the first character of the user locale's own. Neither blanks nor
// exponent nor grouping.
ZBASIC_API bool Zel_Valid_Double(const char* text);

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

// -- Files

// Whether the file can be opened for reading; false for a file kept in the database.
ZBASIC_API bool Zel_FileExists(const char* path);

// Whether another open handle of the file, of this or another process, forbids to have it alone.
// False for a file kept in the database, and when the file cannot be opened for any other reason.
ZBASIC_API bool Zel_FileIsInUse(const char* path);

// The directory of the program file as a full path.
ZBASIC_API SV::String Zel_GetProgramPath(bool withSeparator);

// The path of a file in that directory. An absolute `name` (a leading separator, or a
// drive with one) and one that `Zel_Valid_Filename` rejects are returned as they are.
ZBASIC_API SV::String Zel_GetProgramPathFilename(const SV::String& name);

// -- Error texts

// The numbers are the callers' own: any value, by a cast.
enum ZelErrorCode : std::int32_t {};

// The index of the text for codes without one of their own.
inline constexpr std::size_t kUnknownErrorIndex = 64;

// Texts by index. The library has none: the program fills the table when it starts.
// References to elements are good until the process ends; they show what is set later.
// Threads: any may read as long as none sets.
class ZBASIC_API ZelStringAcceleratorTable {
public:
    // The table of the process.
    static ZelStringAcceleratorTable& GetGlobal();

    ZelStringAcceleratorTable(const ZelStringAcceleratorTable&) = delete;
    ZelStringAcceleratorTable& operator=(const ZelStringAcceleratorTable&) = delete;

    void SetElement(std::size_t index,
                    const SV::String& text);   // or replaces it; empty counts as set
    bool HasElement(std::size_t index) const;  // was it ever set?
    // Empty when the element was never set.
    const SV::String& GetElement(std::size_t index) const;

private:
    struct Elements;
    ZelStringAcceleratorTable();

    Elements* const m_elements;
};

// Where the table has the text of an error: 64 + code for 1 to 4998, else 64.
ZBASIC_API std::size_t Zel_GetErrorStringIndex(ZelErrorCode code);

// The text of an error in the table of the process; that of index 64 when its own is not set.
ZBASIC_API const SV::String& Zel_GetErrorString(ZelErrorCode code);
