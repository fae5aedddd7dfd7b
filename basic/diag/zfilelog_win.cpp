#include "zbasic/zfilelog.h"

#include <algorithm>
#include <cstdarg>
#include <cstring>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "diag/format.h"
#include "diag/librarytext.h"
#include "diag/logclock.h"
#include "diag/logdate.h"
#include "diag/logfile.h"
#include "diag/logtext.h"
#include "diag/plainformat.h"
#include "sv/international.h"
#include "zbasic/ztrace.h"

namespace {

constexpr char kSource[] = "zfilelog.cpp";
constexpr unsigned kNoticeNotWritten = 34;
constexpr unsigned kDateNotRead = 47;
constexpr unsigned kNotEmptied = 78;
constexpr std::uint32_t kDBLogFileText = 3346;

constexpr std::string_view kLineEnd = "\r\n";
constexpr std::size_t kMillisecondsRoom = 16;
constexpr std::size_t kUsualEntry = 1024;  // bytes; longer ones go over the heap

struct FileCloser {
    void operator()(std::FILE* file) const { std::fclose(file); }
};
using File = std::unique_ptr<std::FILE, FileCloser>;

// Today when the file does not begin with a date.
SV::Date dateOfFile(const SV::String& path) {
    const File file(openLogFile(path.c_str(), LogFileMode::kRead));
    if (!file) {
        displayErrorMessage(kSource, kDateNotRead);
        return {};
    }
    LogDateScan scan;
    char block[512];
    std::size_t size = 0;
    do {
        size = std::fread(block, 1, sizeof block, file.get());
    } while (size > 0 && scan.take({block, size}));
    return scan.date().value_or(SV::Date());
}

// Writes the line into the file of that name; an internal error is reported when it cannot be.
void writeLine(const SV::String& path, LogFileMode mode, const SV::String& line, unsigned error) {
    const File file(openLogFile(path.c_str(), mode));
    if (!file) return displayErrorMessage(kSource, error);
    writeLogText(file.get(), line);
}

// The names carry the day: the first ones are the oldest.
void pruneBackups(const SV::DirEntry& log, std::int32_t count) {
    const SV::Dir backups(backupPattern(log));
    const auto kept = static_cast<std::size_t>(std::max(count, 0));
    for (std::size_t i = 0; i + kept < backups.Count(); ++i) backups[i].Kill();
}

void appendFormatted(std::string& text, const char* format, std::va_list args) {
    const int size = std::vsnprintf(nullptr, 0, format, args);
    if (size <= 0) return;
    const std::size_t start = text.size();
    text.resize(start + static_cast<std::size_t>(size));
    std::vsnprintf(text.data() + start, static_cast<std::size_t>(size) + 1, format, args);
}

}  // namespace

ZelBasicFileStream::~ZelBasicFileStream() = default;

ZelBasicTextFileStream::~ZelBasicTextFileStream() = default;

ZelBasicFileLogger::ZelBasicFileLogger(bool flushAfterWrite, bool timeStamped, int backupCount)
    : m_flushAfterWrite(flushAfterWrite),
      m_timeStamped(timeStamped),
      m_backupCount(backupCount),
      m_clock(std::make_unique<LogClock>()) {}

ZelBasicFileLogger::~ZelBasicFileLogger() { ZelBasicFileLogger::close(); }

bool ZelBasicFileLogger::open(const char* path, bool append) {
    if (m_file) return false;
    m_path = path;
    m_clock->update();
    const SV::DirEntry log(m_path);
    m_fileDate = log.Exists() && !log.IsDirectory() ? dateOfFile(m_path) : m_clock->date();
    if (m_backupCount != 0 && m_fileDate != m_clock->date()) moveToBackup();
    m_file.reset(openLogFile(m_path.c_str(), append ? LogFileMode::kAppend : LogFileMode::kEmpty));
    // Where each entry is flushed, it goes to the system by itself: half the way of a buffer.
    if (m_file && m_flushAfterWrite) std::setvbuf(m_file.get(), nullptr, _IONBF, 0);
    return m_file != nullptr;
}

bool ZelBasicFileLogger::close() {
    if (!m_file) return false;
    m_file.reset();
    m_path.clear();
    return true;
}

bool ZelBasicFileLogger::isOpen() const { return m_file != nullptr; }

bool ZelBasicFileLogger::write(const void* data, std::size_t n) {
    return m_file && writeLogText(m_file.get(), {static_cast<const char*>(data), n});
}

bool ZelBasicFileLogger::flush() {
    if (!m_file) return false;
    if (!m_flushAfterWrite) std::fflush(m_file.get());  // else there is nothing that waits
    return !std::ferror(m_file.get());
}

bool ZelBasicFileLogger::deleteFromDisc() {
    if (!m_file) return false;
    m_file.reset();
    if (std::remove(m_path.c_str()) != 0) return false;
    m_path.clear();
    return true;
}

bool ZelBasicFileLogger::addText(const char* format, ...) {
    std::va_list arguments;
    va_start(arguments, format);
    const bool isDone = addEntry(Caller::kAddText, format, arguments);
    va_end(arguments);
    return isDone;
}

bool ZelBasicFileLogger::vaddText(const char* format, char* const& args) {
    return addEntry(Caller::kVaddText, format, args);
}

void ZelBasicFileLogger::setForCSV(bool isForCSV) { m_isForCSV = isForCSV; }

bool ZelBasicFileLogger::addEntry(Caller caller, const char* format, char* args) {
    if (!m_file) return false;
    if (m_timeStamped) rotateAfterMidnight();
    if (!m_file) return false;  // it could not be opened again
    writeEntry(caller, format ? format : "", args);
    return m_flushAfterWrite ? flush() : !std::ferror(m_file.get());
}

void ZelBasicFileLogger::writeEntry(Caller caller, const char* format, char* args) {
    // One piece: the stream takes a lock for each, and half of our time goes there.
    char entry[kUsualEntry];
    const std::size_t start = m_timeStamped ? writeStamp(entry, caller) : 0;
    const std::span<char> room(entry + start, sizeof entry - start - kLineEnd.size());
    const std::optional<std::size_t> size = formatPlain(room, format, args);
    if (size && !std::memchr(room.data(), '\n', *size)) {
        const std::size_t end = m_timeStamped ? kLineEnd.size() : 0;
        std::memcpy(room.data() + *size, kLineEnd.data(), end);
        const std::string_view bytes(entry, start + *size + end);
        if (m_flushAfterWrite) {
            writeLogBytes(m_file.get(), bytes);
        } else {
            std::fwrite(bytes.data(), 1, bytes.size(), m_file.get());
        }
        return;
    }
    std::string text(entry, start + size.value_or(0));
    if (!size) appendFormatted(text, format, args);
    if (m_timeStamped) text += '\n';
    writeLogText(m_file.get(), text);
}

std::size_t ZelBasicFileLogger::writeStamp(char* out, Caller caller) const {
    char* place = out;
    const auto add = [&place](std::string_view text) {
        std::memcpy(place, text.data(), text.size());
        place += text.size();
    };
    // Relied on by callers: the three layouts, of which only one has milliseconds and no end.
    const bool isBare = m_isForCSV && caller == Caller::kAddText;
    add(m_clock->dateText());
    add(!m_isForCSV ? ", " : isBare ? ";" : "; ");
    add(m_clock->timeText());
    if (!isBare) {
        add(": ");
    } else {
        place += std::snprintf(place, kMillisecondsRoom, ",%03u", m_clock->millisecond());
    }
    return static_cast<std::size_t>(place - out);
}

void ZelBasicFileLogger::rotateAfterMidnight() {
    m_clock->update();
    if (m_backupCount == 0 || m_fileDate == m_clock->date()) return;
    const SV::International formats;
    addNotice("Date changed from " + formats.GetDate(m_fileDate) + " to " +
              formats.GetDate(m_clock->date()) + ".");
    const SV::String path = m_path;
    close();
    open(path.c_str(), true);
}

void ZelBasicFileLogger::moveToBackup() {
    const SV::DirEntry log(m_path);
    const SV::DirEntry backup = backupOf(log, m_fileDate);
    SV::String notice = "Moving log file from " + log.GetName() + " to " + backup.GetName() + ".";
    if (const std::uint32_t error = log.MoveTo(backup)) {
        // Relied on by callers: the old day's entries are lost rather than mixed with the new ones.
        notice += formatted(" FAILED (EC: %u)!", error);
        writeLine(m_path, LogFileMode::kEmpty, noticeLine(notice), kNotEmptied);
    } else {
        addNotice(notice);
        pruneBackups(log, m_backupCount);
    }
    m_fileDate = m_clock->date();
}

SV::String ZelBasicFileLogger::noticeLine(const SV::String& text) const {
    return SV::String(m_clock->dateText()) + ", " + SV::String(m_clock->timeText()) + ": " + text +
           "\n";
}

void ZelBasicFileLogger::addNotice(const SV::String& text) {
    const SV::String line = noticeLine(text);
    if (!m_file) return writeLine(m_path, LogFileMode::kAppend, line, kNoticeNotWritten);
    writeLogText(m_file.get(), line);
}

SV::String Zel_GetDBLogFile() { return libraryText(kDBLogFileText); }
