// Matchers side by side.

#pragma once

#include <memory>
#include <string>

struct MatchSpan {
    int start = -1;
    int end = -1;
    bool operator==(const MatchSpan&) const = default;
};

class AnyMatcher {
public:
    virtual ~AnyMatcher() = default;
    // `span` may be null. The size is for the peer that wants it.
    virtual bool search(const char* text, std::size_t size, MatchSpan* span) const = 0;
};

using MakeMatcher = std::unique_ptr<AnyMatcher> (*)(const std::string& pattern, bool ignoreCase,
                                                    bool wantsPositions);

// POSIX extended expressions over bytes, leftmost-longest.
std::unique_ptr<AnyMatcher> makeOurs(const std::string&, bool ignoreCase, bool wantsPositions);
std::unique_ptr<AnyMatcher> makeTre(const std::string&, bool ignoreCase, bool wantsPositions);
std::unique_ptr<AnyMatcher> makeGlibc(const std::string&, bool ignoreCase, bool wantsPositions);
std::unique_ptr<AnyMatcher> makeRe2(const std::string&, bool ignoreCase, bool wantsPositions);
