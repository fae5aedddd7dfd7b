// Wildcards, written as expressions.

#include <new>
#include <string>
#include <string_view>

#include "text/wildcard.h"
#include "zbasic/zmatcher.h"

namespace {

constexpr int kExpressionIgnoreCase = 2;
constexpr int kExpressionNoPositions = 4;

ZelRegEx compiled(const char* pattern, int flags) {
    ZelRegEx result;
    if (!pattern) return result;
    const int ignoreCase = flags & kWildcardIgnoreCase ? kExpressionIgnoreCase : 0;
    try {
        const std::string expression = expressionOfWildcard(pattern, flags);
        result.regComp(expression.c_str(), kExpressionNoPositions | ignoreCase, false);
    } catch (const std::bad_alloc&) {
        result = ZelRegEx();
    }
    return result;
}

}  // namespace

ZelJokerz::ZelJokerz() = default;

ZelJokerz::ZelJokerz(const char* pattern, int flags) : m_regEx(compiled(pattern, flags)) {}

ZelJokerz::ZelJokerz(const ZelJokerz& other) = default;
ZelJokerz& ZelJokerz::operator=(const ZelJokerz& other) = default;

// Relied on by callers: an expression, not a wildcard pattern.
ZelJokerz& ZelJokerz::operator=(const char* expression) {
    m_regEx = expression;
    return *this;
}

ZelJokerz::~ZelJokerz() = default;

int ZelJokerz::match(const char* text) const { return m_regEx.match(text); }

int ZelJokerz::match(const char* text, int& start, int& end) const {
    return m_regEx.match(text, start, end);
}
