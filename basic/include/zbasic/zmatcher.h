// Regular expressions and wildcards over 8-bit text.
//
// Both search a text for the leftmost match, and of those that begin there for the longest. Text
// and pattern end at their first NUL and are taken byte by byte; letters, classes and cases are
// those of the system's ANSI code page, whatever locale the process has set, and no locale is
// changed. `docs/patterns.md` describes both languages with examples.
//
// Copies of a matcher share what was compiled and learn from each other's texts, so an object and
// its copies belong to one thread at a time; other objects may be used by other threads.
// A caller's null pattern is an expression that does not compile, a null text matches nothing.
// Time grows with the size of the text times that of the pattern, memory with the pattern's; only
// an expression with back references may give up (code 12) on a text.

#pragma once

#include <cstdint>
#include <memory>

#include "sv/string.h"
#include "zbasic/zexport.h"

class PatternEngine;  // of the library alone

// 0 for success, else one of the codes below. Others may come by arithmetic and get a generic text.
using ZelRegExError = int;

#if !defined(REG_EXTENDED)  // a system's <regex.h> has the same names, not all with the same values
// Why nothing was found, or why an expression does not compile.
enum : int {
    REG_NOMATCH = 1,   // also of what is not compiled
    REG_BADPAT = 2,    // no pattern at all
    REG_ECOLLATE = 3,  // "[[.xy.]]", "[[=xy=]]": not one character
    REG_ECTYPE = 4,    // "[[:foo:]]"
    REG_EESCAPE = 5,   // ends in a backslash
    REG_ESUBREG = 6,   // "\1" without a closed first group before it
    REG_EBRACK = 7,    // "[" without "]"
    REG_EPAREN = 8,    // "(" without ")" or the other way round
    REG_EBRACE = 9,    // "{" without "}"
    REG_BADBR = 10,    // "{2,1}", "{x}", more than 255
    REG_ERANGE = 11,   // "[b-a]"
    REG_ESPACE = 12,   // too large, too deep (250 groups), or no memory
    REG_BADRPT = 13,   // nothing before "*", "+", "?" or "{"
};
#endif

// Base of what several objects share by counting their references. Not atomic: one thread.
class ZBASIC_API __ZelRefCounted {
public:
    __ZelRefCounted() = default;  // counts 1
    // Relied on by callers: copies take the count over, too; shared objects are never copied.
    __ZelRefCounted(const __ZelRefCounted&) = default;
    __ZelRefCounted& operator=(const __ZelRefCounted&) = default;

    __ZelRefCounted* addRef();  // this object
    void removeRef();           // deletes the object when the count was 1

protected:
    virtual ~__ZelRefCounted();

    std::int32_t m_count = 1;  // references
};

// A compiled expression, and the flags it was compiled with: those asked for and 1.
class ZBASIC_API ZelRegExData : public __ZelRefCounted {
public:
    // `flags` as `ZelRegEx` has them.
    explicit ZelRegExData(int flags);
    ZelRegExData(const ZelRegExData&) = delete;
    ZelRegExData& operator=(const ZelRegExData&) = delete;

    // With the 1, asked for or not.
    int flags() const { return m_flags; }
    // 0, or why the expression does not compile: 2 to 13. Before a success nothing is found.
    ZelRegExError compile(const char* pattern);
    // 0, 1 or 12, as `ZelRegEx::regExec` says. Null positions are not asked for; they are written
    // on success only.
    ZelRegExError search(const char* text, int* start, int* end) const;

protected:
    ~ZelRegExData() override;

private:
    std::int32_t m_flags;
    std::unique_ptr<PatternEngine> m_engine;  // null until compiled
};

// A POSIX extended regular expression (IEEE Std 1003.1, XBD section 9.4).
//
// "^" and "$" stand for the ends of the text only; "." and negated sets match line feeds as well.
//
// Flags: 1 extended syntax (always added), 2 ignore case, 4 no positions (which are there all the
// same). Other bits are kept and mean nothing.
class ZBASIC_API ZelRegEx {
public:
    ZelRegEx();                                // nothing compiled: matches nothing
    ZelRegEx(const char* pattern, int flags);  // `regComp`, showing errors
    // Share what `other` has compiled.
    ZelRegEx(const ZelRegEx& other);
    ZelRegEx& operator=(const ZelRegEx& other);

    ZelRegEx& operator=(const char* pattern);  // `regComp` with flags 4, showing errors
    ~ZelRegEx();

    // Compiles anew; after an error nothing is compiled. With `showErrors` an error opens a box,
    // which belongs to the application window (main thread only).
    ZelRegExError regComp(const char* pattern, int flags, int showErrors);

    // 0 when the text matches, 1 when it does not or nothing is compiled, 12 when the search ran
    // out of memory or the text is longer than 2^31 - 1 bytes. `start` and `end` become the
    // offsets of the match's first byte and of the one behind its last, -1 when there is none.
    // With `showErrors` anything but 0 opens a box, a mismatch, too.
    ZelRegExError regExec(const char* text, int showErrors) const;
    ZelRegExError regExec(const char* text, int& start, int& end, int showErrors) const;

    // 1 or 0; only real errors (2 and more) open a box.
    int match(const char* text) const;
    int match(const char* text, int& start, int& end) const;

    // Whether nothing is compiled; the pointer is null then, and otherwise only says that it is
    // not.
    bool operator!() const { return !m_data; }
    operator void*() const { return m_data; }

    // What a user reads about an error, in the current language.
    static SV::String fmtErrMsg(ZelRegExError code);

private:
    static void displayError(ZelRegExError code);

    ZelRegExData* m_data = nullptr;
};

// A wildcard pattern: "*" for any number of characters, "?" for one.
//
// Flags: 1 ignore case; 2 match anywhere in the text, not only all of it; 4 whole words: between
// blanks, punctuation or the ends of the text, and then "*" and "?" stay within a word (no blank,
// control character or punctuation).
//
// A pattern that does not compile leaves the object unusable without a box. `start` and `end` are
// as `ZelRegEx` has them; a match of whole words includes the characters beside it.
class ZBASIC_API ZelJokerz {
public:
    ZelJokerz();                                // nothing compiled: matches nothing
    ZelJokerz(const char* pattern, int flags);  // compiles; flags as above
    // Share what `other` has compiled.
    ZelJokerz(const ZelJokerz& other);
    ZelJokerz& operator=(const ZelJokerz& other);
    // Relied on by callers: compiles a regular expression, not a wildcard pattern, with flags 4
    // and showing errors, as `ZelRegEx` does.
    ZelJokerz& operator=(const char* expression);
    ~ZelJokerz();

    // 1 or 0. A search that runs out of memory (12) is 0 and opens a box.
    int match(const char* text) const;
    int match(const char* text, int& start, int& end) const;

    // Whether the object is unusable; the pointer is null then, and otherwise only says that it is
    // not.
    bool operator!() const { return !m_regEx; }
    operator void*() const { return m_regEx; }

private:
    ZelRegEx m_regEx;  // as large as the one pointer that it holds
};

// Either matcher, for callers that take both. Objects are not deleted through it.
// Relied on by callers: the order of the virtual operations.
class ZBASIC_API ZelMatcherI {
public:
    virtual operator void*() const = 0;             // not null when usable
    virtual bool operator!() const = 0;             // whether it is not
    virtual int match(const char* text) const = 0;  // 1 or 0

protected:
    ~ZelMatcherI() = default;
};

// A `ZelRegEx` as such a matcher.
class ZBASIC_API ZelRegEx2 final : public ZelMatcherI {
public:
    // Flags, boxes and results are those of `ZelRegEx`.
    ZelRegEx2(const char* pattern, int flags) : m_regEx(pattern, flags) {}

    operator void*() const override { return m_regEx; }
    bool operator!() const override { return !m_regEx; }
    int match(const char* text) const override { return m_regEx.match(text); }

    // As `ZelRegEx::match` with positions.
    int match(const char* text, int& start, int& end) const {
        return m_regEx.match(text, start, end);
    }

private:
    ZelRegEx m_regEx;
};

// A `ZelJokerz` as such a matcher.
class ZBASIC_API ZelJokerz2 final : public ZelMatcherI {
public:
    // Flags, boxes and results are those of `ZelJokerz`.
    ZelJokerz2(const char* pattern, int flags) : m_jokerz(pattern, flags) {}

    operator void*() const override { return m_jokerz; }
    bool operator!() const override { return !m_jokerz; }
    int match(const char* text) const override { return m_jokerz.match(text); }

    // As `ZelJokerz::match` with positions.
    int match(const char* text, int& start, int& end) const {
        return m_jokerz.match(text, start, end);
    }

private:
    ZelJokerz m_jokerz;
};
