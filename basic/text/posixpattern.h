// POSIX extended regular expressions as a tree.

#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "text/byteset.h"
#include "zbasic/zmatcher.h"

struct PatternNode {
    enum class Kind : std::uint8_t {
        kSet,            // one byte of `sets[number]`
        kTextStart,      // ^
        kTextEnd,        // $
        kSequence,       // all children; none of them: the empty text
        kAlternatives,   // one of the children
        kRepeat,         // the child, `min` to `max` times
        kGroup,          // the child, remembered as `number`; only with back references
        kBackReference,  // the text of group `number`
    };
    static constexpr std::int32_t kUnlimited = -1;
    // Of one node; `a{255}{255}` fits.
    static constexpr std::int32_t kMaxRepeat = 65535;

    Kind kind = Kind::kSequence;
    std::int32_t number = 0;
    std::int32_t min = 0;
    std::int32_t max = 0;
    std::vector<PatternNode> children;
};

struct PosixPattern {
    PatternNode root;
    std::vector<ByteSet> sets;  // each once
    bool ignoresCase = false;   // as the sets do already; back references have to, too
    bool hasBackReferences = false;
};

// Deeper trees are refused, so that they can be walked by recursion.
constexpr int kMaxPatternDepth = 250;

// 0, or the code of the first error; `result` is then of no use. May throw `std::bad_alloc`.
//
// Where the standard leaves the meaning open: empty groups and alternatives match the empty text,
// `{,n}` is `{0,n}`, a backslash before an ordinary character is nothing, and repeating nothing
// (also an anchor) is an error, as is an unmatched `)`.
ZelRegExError parsePosixPattern(std::string_view pattern, bool ignoreCase, PosixPattern& result);

// A bracket expression, whose `[` has been read: reads up to behind the closing `]`.
ZelRegExError parseBracket(std::string_view& rest, bool ignoreCase, ByteSet& result);

// The set and the same letters in the other case.
ByteSet withOtherCase(const ByteSet& set);
