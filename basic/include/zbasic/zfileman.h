// Temporary file names, file contents, and what went wrong with a file.

#pragma once

#include <cstdint>

#include "sv/string.h"
#include "zbasic/zexport.h"

// All state is process-wide and without locks: main thread only.

// The message about the last problem with a file. Components that work with files derive from the
// class to set it.
class ZBASIC_API ZelBasicFileManager {
public:
    static const SV::String& getErrorMessage();  // empty at first

protected:
    ZelBasicFileManager();

    // Replace the message, or add to its end without a separator. Empty: nothing is wrong.
    static void _setErrorMessage(const SV::String& text);
    static void _appendErrorMessage(const SV::String& text);
};

// Temporary names and whole files.
class ZBASIC_API ZelSystemFileManager : public ZelBasicFileManager {
public:
    // Fills `content` from a file and returns 0, or returns another number. It is the host that
    // says what `flag` means.
    using ReadStringFromFileFct = long (*)(SV::String& content, const SV::String& fileName,
                                           bool flag);

    // What the environment variable TEMP says, else TMP, else nothing, as it stands: it may end in
    // a separator or not, and need not exist. A variable that is set to nothing counts.
    static SV::String getTempDirectory();

    // A name that no file has: "<temp directory>\<prefix><UUID>.<extension>", without the point
    // when `extension` is null; "\..." on the current drive without a temp directory. No file is
    // made. Whether one ever is or not, the name is deleted when the program exits: take it back
    // with `ZelCleanUp::RemoveFileCleanUpAction` to keep the file, or not to gather names.
    // Empty, behind an internal-error report, when the system makes no UUID.
    static SV::String fileCreateTempName(const char* prefix, const char* extension);

    // Has the installed reader fill `content` and remembers file and content. The reader's result,
    // and -1 behind an internal-error report when none is installed; in both cases, and when the
    // reader throws (which passes through), no file is remembered any more.
    static long readStringFromFile(SV::String& content, const SV::String& fileName, bool flag);

    // Whether `text` is what the last file held.
    // Relied on by callers: never true for an empty text, nor for an empty file.
    static bool IsContentOfLastFile(const SV::String& text);

    // The file that is remembered; both empty when none is.
    static SV::String GetLastFileName();
    static SV::String GetLastFileContent();

    // Takes a path apart: drive ("C:" or "\\server\share"), directory (with the separator at its
    // end), base name and extension (behind the last point of the name; with the point itself when
    // `keepsDot`). With `keepsDot` the four parts in a row are the path again, whatever it is.
    // "." and ".." are base names. Parts may be the same object as `path`.
    //
    //     C:\a.b\c.d.txt  gives  C:  \a.b\  c.d  .txt
    static void splitFileName(const SV::String& path, SV::String& drive, SV::String& directory,
                              SV::String& baseName, SV::String& extension, bool keepsDot);

protected:
    ZelSystemFileManager();

    static ReadStringFromFileFct pReadStringFromFileFct;  // the installed reader; null at first
    static SV::String g_sLastFileName;                    // as `GetLastFileName`
    static SV::String g_sLastFileContent;                 // as `GetLastFileContent`
};

// A reader for hosts that need none of their own: `ZelWholeFileReader::Install();`
class ZBASIC_API ZelWholeFileReader : public ZelSystemFileManager {
public:
    // What became of reading a file.
    enum Result : std::int32_t {
        kRead = 0,
        kNotReadable = 1,
        kTooLarge = 2,  // more than 2 GB (2,147,483,648 bytes)
        kNotUtf8 = 3,
        kNoMemory = 4,
    };

    // Makes `Read` the reader of `readStringFromFile`.
    static void Install();

    // Reads a file of UTF-8, with or without a byte-order mark, into text of the process code page;
    // characters that it lacks become "?". With `keepsBytes` the bytes stay as they are. Line ends
    // and NUL bytes always do. A `Result`; when it is not `kRead`, `content` is empty and the
    // error message says "file: what is wrong". Else the error message is empty.
    static long Read(SV::String& content, const SV::String& fileName, bool keepsBytes);

private:
    ZelWholeFileReader();
};

// A new UUID as 36 lower-case characters, "6ba7b810-9dad-11d1-80b4-00c04fd430c8". Empty, behind an
// internal-error report, when the system makes none.
ZBASIC_API SV::String Zel_GetNewUUID();
