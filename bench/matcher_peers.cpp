#include "matcher_peers.h"

#include <re2/re2.h>
#include <regex.h>

#include "zbasic/zmatcher.h"

namespace {

class Ours : public AnyMatcher {
public:
    Ours(const std::string& pattern, int flags) { m_regex.regComp(pattern.c_str(), flags, false); }

    bool search(const char* text, std::size_t, MatchSpan* span) const override {
        if (!span) return m_regex.regExec(text, false) == 0;
        return m_regex.regExec(text, span->start, span->end, false) == 0;
    }

private:
    ZelRegEx m_regex;
};

class Glibc : public AnyMatcher {
public:
    Glibc(const std::string& pattern, int flags) { regcomp(&m_regex, pattern.c_str(), flags); }
    ~Glibc() override { regfree(&m_regex); }
    Glibc(const Glibc&) = delete;
    Glibc& operator=(const Glibc&) = delete;

    bool search(const char* text, std::size_t, MatchSpan* span) const override {
        regmatch_t match{};
        if (regexec(&m_regex, text, span ? 1 : 0, &match, 0) != 0) return false;
        if (span) *span = {match.rm_so, match.rm_eo};
        return true;
    }

private:
    regex_t m_regex{};
};

re2::RE2::Options optionsOfRe2(bool ignoreCase) {
    re2::RE2::Options options;
    options.set_encoding(re2::RE2::Options::EncodingLatin1);
    options.set_longest_match(true);
    options.set_dot_nl(true);
    options.set_case_sensitive(!ignoreCase);
    return options;
}

class Re2 : public AnyMatcher {
public:
    Re2(const std::string& pattern, bool ignoreCase) : m_regex(pattern, optionsOfRe2(ignoreCase)) {}

    bool search(const char* text, std::size_t size, MatchSpan* span) const override {
        const re2::StringPiece all(text, size);
        re2::StringPiece match;
        const bool isMatch = m_regex.Match(all, 0, size, re2::RE2::UNANCHORED,
                                           span ? &match : nullptr, span ? 1 : 0);
        if (!isMatch || !span) return isMatch;
        span->start = static_cast<int>(match.data() - text);
        span->end = span->start + static_cast<int>(match.size());
        return true;
    }

private:
    re2::RE2 m_regex;
};

}  // namespace

std::unique_ptr<AnyMatcher> makeOurs(const std::string& pattern, bool ignoreCase,
                                     bool wantsPositions) {
    return std::make_unique<Ours>(pattern, (ignoreCase ? 2 : 0) | (wantsPositions ? 0 : 4));
}

std::unique_ptr<AnyMatcher> makeGlibc(const std::string& pattern, bool ignoreCase,
                                      bool wantsPositions) {
    int flags = REG_EXTENDED;
    if (ignoreCase) flags |= REG_ICASE;
    if (!wantsPositions) flags |= REG_NOSUB;
    return std::make_unique<Glibc>(pattern, flags);
}

std::unique_ptr<AnyMatcher> makeRe2(const std::string& pattern, bool ignoreCase, bool) {
    return std::make_unique<Re2>(pattern, ignoreCase);
}
