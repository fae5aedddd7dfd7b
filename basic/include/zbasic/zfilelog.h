// Log files: entries with a time stamp, one file a day, and a fixed number of old ones.

#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <memory>

#include "sv/datetime.h"
#include "sv/string.h"
#include "zbasic/zexport.h"
#include "zbasic/zversion.h"  // the slot for the web service's logger

class LogClock;

// A file that is written from its start to its end. The order of the virtual operations is relied
// on by callers, here and in the classes below.
class ZBASIC_API ZelBasicFileStream {
public:
    ZelBasicFileStream() = default;
    // There is nothing to copy here; what derives decides for itself.
    ZelBasicFileStream(const ZelBasicFileStream&) = default;
    ZelBasicFileStream& operator=(const ZelBasicFileStream&) = default;
    virtual ~ZelBasicFileStream();

    // True when it was done; what needs an open file gives false without one.
    virtual bool open(const char* path, bool append) = 0;  // makes the file when there is none
    virtual bool close() = 0;                              // what is in a buffer is written before
    virtual bool isOpen() const = 0;                       // from `open` to `close`
    virtual bool write(const void* data, std::size_t n) = 0;  // `n` bytes at the end
    virtual bool flush() = 0;           // hands the system what is still in a buffer
    virtual bool deleteFromDisc() = 0;  // closes and deletes
};

// One that takes formatted text as well.
class ZBASIC_API ZelBasicTextFileStream : public ZelBasicFileStream {
public:
    ZelBasicTextFileStream() = default;
    // There is nothing to copy or move here; what derives decides for itself.
    ZelBasicTextFileStream(const ZelBasicTextFileStream&) = default;
    ZelBasicTextFileStream(ZelBasicTextFileStream&&) = default;
    ZelBasicTextFileStream& operator=(const ZelBasicTextFileStream&) = default;
    ZelBasicTextFileStream& operator=(ZelBasicTextFileStream&&) = default;
    ~ZelBasicTextFileStream() override;

    // Writes a text in `printf`'s format; true when that was done.
    virtual bool addText(const char* format, ...) = 0;
    // `args` is a `va_list`, which is a `char*` on this platform.
    virtual bool vaddText(const char* format, char* const& args) = 0;
};

// A log file. It is written through the run time's buffer, line ends as CR LF; the handle is not
// inherited by child processes, and other programs may read and write the file meanwhile.
//
// Rotation, for a `backupCount` other than 0: the file holds the entries of one day, which is the
// date at the very start of the file ("2024.03.05, ..."), today when it does not begin with one.
// When the day is over (at `open`, or at a time-stamped entry) the file is renamed to
// "<base>_2024.03.05.<ext>" beside it, a new one is begun with a notice about that, and of all
// entries of the folder that match "<base>_*.<ext>" (whatever they are) those first by name are
// deleted until `backupCount` are left; with a negative count none are.
// Relied on by callers: when the rename fails (the backup exists already, another program holds the
// file) the old content is lost: the file is emptied, and its notice ends in
// " FAILED (EC: <error code of the system>)!".
//
// Errors: every operation of a closed logger but `open` gives false and does nothing. Write errors
// are only in the results; once a write has failed they stay false until the file is opened anew,
// although later entries are written as soon as they can be. The logger's own file accesses report
// failures as internal errors of "zfilelog": 34 a notice could not be written to the closed file,
// 47 the date of the file could not be read, 78 the file could not be emptied.
// Threads: one logger must not be used by two threads at a time.
class ZBASIC_API ZelBasicFileLogger : public ZelBasicTextFileStream {
public:
    // Opens nothing yet.
    // - `flushAfterWrite`: an entry is handed to the system before `addText` returns.
    // - `timeStamped`: an entry is a line, with the local time before it and a line end behind it.
    // - `backupCount`: how many old files are kept; 0: no rotation.
    ZelBasicFileLogger(bool flushAfterWrite, bool timeStamped, int backupCount);
    ZelBasicFileLogger(const ZelBasicFileLogger&) = delete;
    ZelBasicFileLogger& operator=(const ZelBasicFileLogger&) = delete;
    ~ZelBasicFileLogger() override;  // closes

    // False when it is open already, which stays as it is, or when the file cannot be opened.
    // Without `append` the file is emptied; a file of another day is moved away before, and then
    // the notice about that is lost.
    bool open(const char* path, bool append) override;

    bool close() override;  // true when it was open
    bool isOpen() const override;

    // `n` bytes without stamp or flush, "\n" as CR LF; true when all were taken.
    bool write(const void* data, std::size_t n) override;
    // True when all written so far has reached the system.
    bool flush() override;
    // Closes and deletes the file. False, though closed, when it cannot be deleted.
    bool deleteFromDisc() override;

    // One entry in `printf`'s format (ISO C: "%zu", "%lld"); a null format is an empty text. The
    // stamp before it, for a time-stamped logger:
    //
    //                   addText                         vaddText
    //     normal        2024.03.05, 14:07:09: text      2024.03.05, 14:07:09: text
    //     CSV           2024.03.05;14:07:09,123text     2024.03.05; 14:07:09: text
    //
    // Relied on by callers: the CSV stamp of `addText` has no separator behind it (the text brings
    // its own), and that of `vaddText` is another one.
    // True when no write has failed so far; with `flushAfterWrite` what `flush` says.
    bool addText(const char* format, ...) override;
    bool vaddText(const char* format, char* const& args) override;

    // Whether entries are laid out for CSV, from the next one on; false at first.
    void setForCSV(bool isForCSV);

private:
    enum class Caller { kAddText, kVaddText };
    struct Closer {
        void operator()(std::FILE* file) const { std::fclose(file); }
    };

    bool addEntry(Caller caller, const char* format, char* args);
    void writeEntry(Caller caller, const char* format, char* args);
    void rotateAfterMidnight();
    void moveToBackup();
    void addNotice(const SV::String& text);
    SV::String noticeLine(const SV::String& text) const;
    std::size_t writeStamp(char* out, Caller caller) const;

    SV::String m_path;
    std::unique_ptr<std::FILE, Closer> m_file;
    bool m_flushAfterWrite;
    bool m_timeStamped;
    bool m_isForCSV = false;
    std::int32_t m_backupCount;
    SV::Date m_fileDate;
    std::unique_ptr<LogClock> m_clock;
};

// Append an entry to the log file of that name, with a time stamp and flushed, without rotation.
// The file is opened by the first entry and closed when the library is unloaded; the registry tells
// names apart by their bytes up to the first NUL. Not to be called by two threads at a time.
//
// Relied on by callers:
// - `text` is a format, as of `addText`, but without arguments: "%%" is a "%", any other conversion
//   ("100% done" has one: "% d") is left out.
// - The function that names a file first decides whether it is written as CSV.
// - A file that cannot be opened then is not tried again; its entries are lost.
ZBASIC_API void Zel_AddToLog(const SV::String& fileName, const SV::String& text);
ZBASIC_API void Zel_AddToCSVLog(const SV::String& fileName, const SV::String& text);

// The file name of the database log, from the resources of the library.
ZBASIC_API SV::String Zel_GetDBLogFile();
