// Logs that are named by their file, without a logger in the caller's hands.

#include <cstring>
#include <map>
#include <memory>
#include <string>
#include <utility>

#include "diag/logtext.h"
#include "zbasic/zfilelog.h"

namespace {

// Relied on by callers: names are told apart by their bytes up to the first NUL.
struct ByText {
    bool operator()(const SV::String& a, const SV::String& b) const {
        return std::strcmp(a.c_str(), b.c_str()) < 0;
    }
};

using Loggers = std::map<SV::String, std::unique_ptr<ZelBasicFileLogger>, ByText>;

// Never destroyed: who logs when the library is already being unloaded finds it still. What is
// logged then is in its file as well, as these loggers flush every entry.
Loggers& loggers() {
    static Loggers& all = *new Loggers;
    return all;
}

struct AtUnload {
    ~AtUnload() { loggers().clear(); }
} g_atUnload;

ZelBasicFileLogger& loggerOf(const SV::String& fileName, bool isForCSV) {
    std::unique_ptr<ZelBasicFileLogger>& logger = loggers()[fileName];
    if (!logger) {
        auto made = std::make_unique<ZelBasicFileLogger>(true, true, 0);
        made->setForCSV(isForCSV);  // Relied on by callers: only the first call decides.
        made->open(fileName.c_str(), true);
        logger = std::move(made);  // not before: without memory it is tried again
    }
    return *logger;
}

void add(const SV::String& fileName, const SV::String& text, bool isForCSV) {
    ZelBasicFileLogger& logger = loggerOf(fileName, isForCSV);
    std::string entry;
    // Relied on by callers: the text is a format.
    appendWithoutArguments(entry, text.c_str());
    logger.addText("%s", entry.c_str());
}

}  // namespace

void Zel_AddToLog(const SV::String& fileName, const SV::String& text) {
    add(fileName, text, false);
}

void Zel_AddToCSVLog(const SV::String& fileName, const SV::String& text) {
    add(fileName, text, true);
}
