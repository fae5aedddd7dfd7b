// The order that lists are sorted in.

#include <algorithm>
#include <cstring>

#include "text/ztools_sys.h"
#include "zbasic/ztools.h"
#include "zbasic/ztrace.h"

namespace {

constexpr char kSource[] = "ztools.cpp";
constexpr unsigned kCompareFailed = 122;

// Of two texts that are equal but for case: the first letter that differs in case decides.
Order orderByCase(const char* a, const char* b) {
    const std::size_t size = std::min(std::strlen(a), std::strlen(b));
    for (std::size_t i = 0; i < size; ++i) {
        if (a[i] == b[i] || !isLetter(a[i]) || !isLetter(b[i])) continue;
        const bool isUpper = isUpperLetter(a[i]);
        if (isUpper != isUpperLetter(b[i])) return isUpper ? Order::kLess : Order::kGreater;
    }
    return Order::kEqual;
}

Order order(const char* a, const char* b) {
    const Order byLetters = orderIgnoringCase(a, b);
    if (byLetters == Order::kFailed) displayErrorMessage(kSource, kCompareFailed);
    return byLetters == Order::kEqual ? orderByCase(a, b) : byLetters;
}

}  // namespace

int zel_lexcmp(const char* a, const char* b) {
    switch (order(a, b)) {
        case Order::kLess:
            return -1;
        case Order::kEqual:
            return 0;
        default:
            return 1;  // Relied on by callers: a comparison that failed, too
    }
}

bool Zel_IsLexGreater(const SV::String& a, const SV::String& b) {
    return order(a.c_str(), b.c_str()) == Order::kGreater;
}

bool Zel_IsLexGreaterEqual(const SV::String& a, const SV::String& b) {
    const Order result = order(a.c_str(), b.c_str());
    return result == Order::kGreater || result == Order::kEqual;
}
