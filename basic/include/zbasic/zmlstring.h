// Texts of chosen resources in every installed language at once.

#pragma once

#include "sv/string.h"
#include "zbasic/zexport.h"

// The language of the user interface has its texts in resource libraries. Some
// texts are needed in all languages together: whoever reads a file that a user
// of another language wrote has to know "Datei" as well as "File". They lie in
// one file a language, "language\<id>\zelml.dll" in the program's directory
// (plain data, whatever its name says; `zelml` writes it).
//
// A language and a resource are named by 16-bit numbers. Texts are in the
// process code page and are compared byte by byte: case matters, nothing is
// trimmed. Languages are visited by ascending number.
// A null text counts as the empty one, a null `length` is not written.
// Threads: any number may look up at a time; loading and clearing must happen
// while nobody looks up. Errors: a lookup finds nothing; nothing is reported.

// What `Zel_MultiLangSearchForAny` answers when there is no occurrence.
constexpr int ZEL_MULTILANG_NOT_FOUND = 0x7FFFFFFF;

// Loads the file of every language of `ZelInternational::GetAvailableLanguages`.
// A language whose file is missing, or has another magic number or version, has
// no texts. A file that ends early keeps the records that are complete. An id
// that is there already keeps its text, be it from the same file or from an
// earlier call: whoever wants changed files read again clears first.
ZBASIC_API void Zel_InitializeMultiLanguageStrings();

// Forgets all languages and texts and releases their memory.
ZBASIC_API void Zel_DeinitializeMultiLanguageStrings();

// The text of `resId` in one language; empty when there is none.
ZBASIC_API SV::String Zel_MultiLangGet(unsigned short resId, const unsigned short& language);

// Whether `text` equals the text of `resId` in some language. `*length` becomes
// the length of `text` then, and is left alone otherwise.
//     Zel_MultiLangEquals("File", 7, &length)  // true and 4 for Datei, File; "file": false
ZBASIC_API bool Zel_MultiLangEquals(const SV::String& text, unsigned short resId,
                                    int* length = nullptr);
ZBASIC_API bool Zel_MultiLangEquals(const char* text, unsigned short resId, int* length = nullptr);

// Whether `text` starts with the text of `resId` in some language; the first
// such language gives `*length`, which is left alone when there is none. (A file
// cannot hold an empty text, which would start every other one.)
ZBASIC_API bool Zel_MultiLangStartsWith(const SV::String& text, unsigned short resId,
                                        int* length = nullptr);
ZBASIC_API bool Zel_MultiLangStartsWith(const char* text, unsigned short resId,
                                        int* length = nullptr);

// The earliest offset in `text` at which the text of `resId` in any language
// occurs, or `ZEL_MULTILANG_NOT_FOUND`. `*length` becomes the length of the text
// that was found; at one place the first language wins.
// Relied on by callers: the first language that has the resource writes
// `*length` even when its text does not occur. Look at the result first.
ZBASIC_API int Zel_MultiLangSearchForAny(const SV::String& text, unsigned short resId,
                                         int* length = nullptr);

// The resource whose text in some language equals `text`, or 0.
// Relied on by callers: of several the last one, that is the highest language
// and in it the highest id.
ZBASIC_API unsigned short Zel_MultiLangFindResId(const SV::String& text);
ZBASIC_API unsigned short Zel_MultiLangFindResId(const char* text);
