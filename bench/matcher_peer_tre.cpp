#include <tre/tre.h>

#include "matcher_peers.h"

namespace {

class Tre : public AnyMatcher {
public:
    Tre(const std::string& pattern, int flags) { tre_regcomp(&m_regex, pattern.c_str(), flags); }
    ~Tre() override { tre_regfree(&m_regex); }
    Tre(const Tre&) = delete;
    Tre& operator=(const Tre&) = delete;

    bool search(const char* text, std::size_t, MatchSpan* span) const override {
        regmatch_t match{};
        if (tre_regexec(&m_regex, text, span ? 1 : 0, &match, 0) != 0) return false;
        if (span) *span = {match.rm_so, match.rm_eo};
        return true;
    }

private:
    regex_t m_regex{};
};

}  // namespace

std::unique_ptr<AnyMatcher> makeTre(const std::string& pattern, bool ignoreCase,
                                    bool wantsPositions) {
    int flags = REG_EXTENDED;
    if (ignoreCase) flags |= REG_ICASE;
    if (!wantsPositions) flags |= REG_NOSUB;
    return std::make_unique<Tre>(pattern, flags);
}
