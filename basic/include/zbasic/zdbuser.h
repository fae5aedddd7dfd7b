// The user that a program logs in to its database as.

#pragma once

#include <cstdio>
#include <memory>

#include "sv/string.h"
#include "zbasic/zexport.h"

// Reads the database user file: one line, `ZelCryptoUtils::AESEncrypt` with the built-in
// key of a text of three lines (first line, user name, password; two line feeds in all).
// The line has no line feed behind it: with one its hexadecimal digits do not decode.
// `zeldbuser` writes such files; docs/encryption.md describes them.
//
// The file is read once, by the constructor, and stays open until the last copy of the
// object is gone, so that nobody can exchange it meanwhile.
// A line of more than 4,095 characters is not read as a whole, and so does not decode.
// Threads: one object must not be used by two threads at a time.
class ZBASIC_API ZelDBUserUtils {
public:
    ZelDBUserUtils();                  // "zdbuser.txt" in the program's directory
    ZelDBUserUtils(const char* path);  // null: as above
    // Copies know what was read, and share the open file.
    ZelDBUserUtils(const ZelDBUserUtils& other);
    ZelDBUserUtils& operator=(const ZelDBUserUtils& other);
    ~ZelDBUserUtils();

    // Whether the file could be opened. Its content may be worthless all the same.
    bool IsExternalDefined();

    // What the file says; empty when it could not be opened or does not hold three lines.
    // Relied on by callers: `fallback` is never used, not even for an empty value.
    SV::String GetDBUserName(const SV::String& fallback);
    SV::String GetDBUserPassword(const SV::String& fallback);

protected:
    // Opens and reads. A given file that cannot be opened is reported to the debug output
    // ("File <path> for ZEL_BOOT information was not found!"), a missing default file is not.
    void _Init(const char* path);

private:
    void wipe();

    std::shared_ptr<std::FILE> m_file;
    SV::String m_firstLine;
    SV::String m_userName;
    SV::String m_password;
};
