#include "zbasic/zmatcher.h"

#include <climits>
#include <cstring>
#include <new>
#include <string_view>
#include <utility>

#include "diag/librarytext.h"
#include "text/matchererror.h"
#include "text/patternengine.h"

namespace {

constexpr int kExtended = 1;
constexpr int kIgnoreCase = 2;
constexpr int kNoPositions = 4;

constexpr std::uint32_t kCannotBeUsedText = 950;
constexpr std::uint32_t kNoMemoryText = 951;
constexpr std::uint32_t kOtherErrorText = 960;
constexpr std::uint32_t kFirstErrorText = 961;  // of `REG_ECOLLATE`

const char* nameOf(ZelRegExError code) {
    switch (code) {
        case 0:
            return "No error";
        case REG_NOMATCH:
            return "No match";
        case REG_BADPAT:
            return "Invalid expression";
        case REG_ESPACE:
            return "Out of memory";
        default:
            return "Unknown error";
    }
}

// `match` may be null. Apart from what refuses most texts, which needs no stack frame.
[[gnu::noinline]] ZelRegExError searchWith(PatternEngine& engine, const char* text,
                                           PatternEngine::Match* match) {
    if (engine.refusesStart(text)) return REG_NOMATCH;
    const std::string_view all = text;
    if (all.size() > INT_MAX) return REG_ESPACE;
    try {
        return engine.search(all, match);
    } catch (const std::bad_alloc&) {
        engine.forget();
        return REG_ESPACE;
    }
}

}  // namespace

__ZelRefCounted::~__ZelRefCounted() = default;

__ZelRefCounted* __ZelRefCounted::addRef() {
    ++m_count;
    return this;
}

void __ZelRefCounted::removeRef() {
    if (m_count == 1) {
        delete this;
    } else {
        --m_count;
    }
}

ZelRegExData::ZelRegExData(int flags) : m_flags(flags | kExtended) {}

ZelRegExData::~ZelRegExData() = default;

ZelRegExError ZelRegExData::compile(const char* pattern) {
    if (!pattern) return REG_BADPAT;
    try {
        return PatternEngine::make(pattern, (m_flags & kIgnoreCase) != 0, m_engine);
    } catch (const std::bad_alloc&) {
        return REG_ESPACE;
    }
}

ZelRegExError ZelRegExData::search(const char* text, int* start, int* end) const {
    if (!text || !m_engine || m_engine->refusesFirstByte(*text)) return REG_NOMATCH;
    if (!start || !end) return searchWith(*m_engine, text, nullptr);
    PatternEngine::Match match{};
    const ZelRegExError error = searchWith(*m_engine, text, &match);
    if (error != 0) return error;
    *start = static_cast<int>(match.start);
    *end = static_cast<int>(match.end);
    return 0;
}

ZelRegEx::ZelRegEx() = default;

ZelRegEx::ZelRegEx(const char* pattern, int flags) { regComp(pattern, flags, true); }

ZelRegEx::ZelRegEx(const ZelRegEx& other) : m_data(other.m_data) {
    if (m_data) m_data->addRef();
}

ZelRegEx& ZelRegEx::operator=(const ZelRegEx& other) {
    ZelRegEx copy(other);
    std::swap(m_data, copy.m_data);
    return *this;
}

ZelRegEx& ZelRegEx::operator=(const char* pattern) {
    regComp(pattern, kNoPositions, true);
    return *this;
}

ZelRegEx::~ZelRegEx() {
    if (m_data) m_data->removeRef();
    m_data = nullptr;
}

ZelRegExError ZelRegEx::regComp(const char* pattern, int flags, int showErrors) {
    if (m_data) m_data->removeRef();
    m_data = new (std::nothrow) ZelRegExData(flags);
    const ZelRegExError error = m_data ? m_data->compile(pattern) : REG_ESPACE;
    if (error == 0) return 0;
    if (m_data) m_data->removeRef();
    m_data = nullptr;
    if (showErrors) displayError(error);
    return error;
}

ZelRegExError ZelRegEx::regExec(const char* text, int showErrors) const {
    if (!m_data) return REG_NOMATCH;
    const ZelRegExError error = m_data->search(text, nullptr, nullptr);
    if (error != 0 && showErrors) displayError(error);
    return error;
}

ZelRegExError ZelRegEx::regExec(const char* text, int& start, int& end, int showErrors) const {
    start = end = -1;
    if (!m_data) return REG_NOMATCH;
    const ZelRegExError error = m_data->search(text, &start, &end);
    if (error != 0 && showErrors) displayError(error);
    return error;
}

int ZelRegEx::match(const char* text) const {
    if (!m_data) return 0;
    const ZelRegExError error = m_data->search(text, nullptr, nullptr);
    if (error > REG_NOMATCH) displayError(error);
    return error == 0;
}

int ZelRegEx::match(const char* text, int& start, int& end) const {
    const ZelRegExError error = regExec(text, start, end, false);
    if (error > REG_NOMATCH) displayError(error);
    return error == 0;
}

SV::String ZelRegEx::fmtErrMsg(ZelRegExError code) {
    if (code >= REG_ECOLLATE && code <= REG_BADRPT && code != REG_ESPACE) {
        return libraryText(kFirstErrorText + static_cast<std::uint32_t>(code - REG_ECOLLATE));
    }
    SV::String message = libraryText(kOtherErrorText);
    constexpr std::string_view kPlaceholder = "%s";
    const std::size_t place = message.find(kPlaceholder);
    if (place != SV::String::npos) message.replace(place, kPlaceholder.size(), nameOf(code));
    return message;
}

// Without memory for the message there is none; the caller has the code.
void ZelRegEx::displayError(ZelRegExError code) {
    try {
        if (code == REG_ESPACE) return showMatcherError(libraryText(kNoMemoryText));
        showMatcherError(libraryText(kCannotBeUsedText) + "\n\n" + fmtErrMsg(code));
    } catch (const std::bad_alloc&) {
    }
}
