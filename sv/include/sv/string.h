// Text in the process code page: the string of every interface.

#pragma once

#include <atomic>
#include <compare>
#include <cstddef>
#include <cstring>
#include <functional>
#include <iosfwd>
#include <string_view>

#include "sv/export.h"

namespace SV {

// The constants of `String`. A base of its own: constants of an exported class cannot be bound
// to references in a program that imports it.
struct StringConstants {
    static constexpr std::size_t npos = static_cast<std::size_t>(-1);  // no position; up to the end
    static constexpr std::size_t kInlineCapacity = 23;                 // bytes held in the object
    static constexpr std::size_t kMaxSize = static_cast<std::size_t>(-1) / 4;  // bytes of any text
};

// 8-bit text in the process code page; may hold NUL bytes, and always has one
// behind its last byte. Sizes and positions count bytes.
//
// Texts of up to 23 bytes are held in the object itself. Longer ones lie in a
// block that copies share and that is copied by the first of them to be
// changed, so copying a long text costs as much as counting up.
//
// Threads: two objects may be used by two threads at a time, also when they
// share a block; one object needs the caller's lock.
// Errors: `std::bad_alloc` where memory runs out, `std::length_error` for a
// text longer than `kMaxSize`; the object then is as it was.
class SV_API String : public StringConstants {
public:
    String() noexcept { setInline(0); }
    String(const char* text) : String(text, text ? std::strlen(text) : 0) {}  // null: empty
    // A copy of these bytes, NUL bytes among them; `text` may be null when `size` is 0.
    String(const char* text, std::size_t size) {
        if (size > kInlineCapacity) {
            initHeap(text, size);
        } else {
            if (size) std::memcpy(m_inline, text, size);
            setInline(size);
        }
    }
    explicit String(std::string_view text) : String(text.data(), text.size()) {}
    String(std::size_t count, char c);  // that many times `c`
    // A long text is shared, not copied.
    String(const String& other) {
        if (other.isHeap()) {
            initShared(other);
        } else {
            std::memcpy(m_inline, other.m_inline, sizeof m_inline);
        }
    }
    // What was moved from is empty.
    String(String&& other) noexcept {
        std::memcpy(m_inline, other.m_inline, sizeof m_inline);
        other.setInline(0);
    }
    // As the constructors, also from a part of this text; null is empty.
    String& operator=(const String& other);
    String& operator=(String&& other) noexcept {
        if (this != &other) {
            release();
            std::memcpy(m_inline, other.m_inline, sizeof m_inline);
            other.setInline(0);
        }
        return *this;
    }
    String& operator=(const char* text) { return assign(text, text ? std::strlen(text) : 0); }
    String& operator=(std::string_view text) { return assign(text.data(), text.size()); }
    ~String() { release(); }

    // The bytes with the NUL behind them; valid until this object is changed or destroyed.
    const char* c_str() const noexcept { return data(); }
    const char* data() const noexcept { return isHeap() ? m_heap.block->text() : m_inline; }
    // Bytes, without the NUL at the end.
    std::size_t size() const noexcept {
        return isHeap() ? m_heap.size : kInlineCapacity - inlineRoom();
    }
    bool empty() const noexcept { return size() == 0; }
    // The bytes that fit without a new block, if no copy shares this one.
    std::size_t capacity() const noexcept {
        return isHeap() ? m_heap.block->capacity() : kInlineCapacity;
    }
    // No check of the index; the byte behind the last one is the NUL.
    char operator[](std::size_t index) const noexcept { return data()[index]; }
    // The bytes as a range; valid as `data`.
    const char* begin() const noexcept { return data(); }
    const char* end() const noexcept { return data() + size(); }
    operator std::string_view() const noexcept { return {data(), size()}; }

    void clear() noexcept;               // keeps memory that nobody shares
    void reserve(std::size_t capacity);  // room for that many bytes without a new block
    // Adds at the end; `text` may lie in this object. Takes constant time a byte, on average.
    String& append(const char* text, std::size_t size) {
        const auto copy = [text, size](char* end) noexcept {
            if (size) std::memcpy(end, text, size);  // no overlap, also of this text's own bytes
        };
        return appendInPlace(size, copy) ? *this : appendSlow(text, size);
    }
    String& append(std::string_view text) { return append(text.data(), text.size()); }
    String& append(std::size_t count, char c);
    String& assign(const char* text, std::size_t size);  // `text` may lie in this object
    // As `assign`, for a place in a larger buffer: `kInlineCapacity` bytes must be readable there
    // whatever `size` is, and may not lie in this object. Short texts are then copied in one go.
    String& assignPadded(const char* text, std::size_t size) {
        if (size > kInlineCapacity) return assign(text, size);
        if (!isHeap()) {
            std::memcpy(m_inline, text, kInlineCapacity);
            setInline(size);
        } else if (m_heap.block->capacity() >= kInlineCapacity && isUnique()) {
            std::memcpy(m_heap.block->text(), text, kInlineCapacity);
            setHeap(m_heap.block, size);
        } else {
            return assign(text, size);
        }
        return *this;
    }
    String& assign(std::string_view text) { return assign(text.data(), text.size()); }
    // Text that is made in place, as `std::string` of C++23 has it: `write(text, size)` gets this
    // text, up to its old size, in `size` bytes, of which it may change all. It returns how many
    // are the text from then on, and throws nothing.
    template <class Write>
    void resizeAndOverwrite(std::size_t size, Write write) {
        if (size > kInlineCapacity || isHeap()) reserve(size);
        const std::size_t written = write(isHeap() ? m_heap.block->text() : m_inline, size);
        if (isHeap()) {
            setHeap(m_heap.block, written);
        } else {
            setInline(written);
        }
    }
    // As `append`; null adds nothing.
    String& operator+=(const String& text) { return append(text.data(), text.size()); }
    String& operator+=(std::string_view text) { return append(text.data(), text.size()); }
    String& operator+=(const char* text) { return append(text, text ? std::strlen(text) : 0); }
    String& operator+=(char c) {
        const auto put = [c](char* end) noexcept { *end = c; };
        return appendInPlace(1, put) ? *this : append(std::size_t{1}, c);
    }

    // Positions beyond the end count as the end, counts reach to it at most. `text` may lie in
    // this object.
    String& insert(std::size_t pos, std::string_view text) { return replace(pos, 0, text); }
    String& erase(std::size_t pos, std::size_t count = npos) { return replace(pos, count, {}); }
    String& replace(std::size_t pos, std::size_t count, std::string_view text);
    String substr(std::size_t pos, std::size_t count = npos) const;

    // Position of the first (last) occurrence at or behind (at or before) `pos`, or `npos`.
    std::size_t find(std::string_view text, std::size_t pos = 0) const noexcept {
        return std::string_view(*this).find(text, pos);
    }
    std::size_t find(char c, std::size_t pos = 0) const noexcept {
        return std::string_view(*this).find(c, pos);
    }
    std::size_t rfind(std::string_view text, std::size_t pos = npos) const noexcept {
        return std::string_view(*this).rfind(text, pos);
    }
    std::size_t rfind(char c, std::size_t pos = npos) const noexcept {
        return std::string_view(*this).rfind(c, pos);
    }

    // Copies with letters changed by the code page (umlauts are letters).
    String Upper() const;
    String Lower() const;

    // The number at the start of the text, read with "." whatever the locale;
    // 0 when there is none, infinity beyond the range of a double.
    explicit operator double() const noexcept;

    // By unsigned bytes.
    friend bool operator==(const String& a, const String& b) noexcept {
        return std::string_view(a) == std::string_view(b);
    }
    friend bool operator==(const String& a, std::string_view b) noexcept {
        return std::string_view(a) == b;
    }
    friend bool operator==(const String& a, const char* b) noexcept {
        return std::string_view(a) == (b ? std::string_view(b) : std::string_view());
    }
    friend std::strong_ordering operator<=>(const String& a, const String& b) noexcept {
        return std::string_view(a) <=> std::string_view(b);
    }
    friend std::strong_ordering operator<=>(const String& a, std::string_view b) noexcept {
        return std::string_view(a) <=> b;
    }

private:
    struct Block {
        // Set when a copy shares the block, and kept until its owner is found to be the only one:
        // whoever appends then asks one word for both that and the capacity.
        static constexpr std::size_t kShared = ~(static_cast<std::size_t>(-1) >> 1);

        std::atomic<std::size_t> owners;
        std::atomic<std::size_t> limit;  // the capacity, with `kShared`

        char* text() noexcept { return reinterpret_cast<char*>(this + 1); }
        // Text bytes without the NUL.
        std::size_t capacity() const noexcept {
            return limit.load(std::memory_order_relaxed) & ~kShared;
        }
        // Whether the one who asks may write `size` bytes of text; true is certain.
        bool hasRoom(std::size_t size) const noexcept {
            return static_cast<std::ptrdiff_t>(size) <=
                   static_cast<std::ptrdiff_t>(limit.load(std::memory_order_relaxed));
        }
        void addOwner() noexcept {
            owners.fetch_add(1, std::memory_order_relaxed);
            limit.store(capacity() | kShared, std::memory_order_relaxed);
        }
        void setUnshared() noexcept { limit.store(capacity(), std::memory_order_relaxed); }
    };
    struct Heap {
        Block* block;
        std::size_t size;
        std::size_t mark;  // its last byte is `kHeapMark`
    };
    // The last byte tells the two apart: a short text keeps its free bytes
    // there (0 for 23 bytes of text, so that it is the closing NUL as well).
    static constexpr char kHeapMark = 0x7F;
    static constexpr std::size_t kHeapMarkWord = static_cast<std::size_t>(kHeapMark)
                                                 << (8 * (sizeof(std::size_t) - 1));

    char mark() const noexcept { return m_inline[kInlineCapacity]; }
    bool isHeap() const noexcept { return mark() == kHeapMark; }
    // The compiler is told the range: it warns of impossible sizes otherwise.
    std::size_t inlineRoom() const noexcept {
        const auto room = static_cast<unsigned char>(mark());
        if (room > kInlineCapacity) __builtin_unreachable();
        return room;
    }
    void setInline(std::size_t size) noexcept {
        m_inline[size] = '\0';
        m_inline[kInlineCapacity] = static_cast<char>(kInlineCapacity - size);
    }
    void setHeap(Block* block, std::size_t size) noexcept {
        m_heap = {block, size, kHeapMarkWord};
        block->text()[size] = '\0';
    }
    bool isUnique() const noexcept {
        return m_heap.block->owners.load(std::memory_order_acquire) == 1;
    }
    // Adds `size` bytes, which `write(end)` puts behind the text, when they fit and no copy is
    // known to share the block; else false. The size is stored last: the compiler would have to
    // read it again behind bytes that might lie anywhere.
    template <class Write>
    bool appendInPlace(std::size_t size, Write write) noexcept {
        if (!isHeap()) {
            const std::size_t room = inlineRoom();
            if (size > room) return false;
            char* const end = m_inline + (kInlineCapacity - room);
            write(end);
            end[size] = '\0';
            m_inline[kInlineCapacity] = static_cast<char>(room - size);
            return true;
        }
        Block* const block = m_heap.block;
        const std::size_t end = m_heap.size;
        if (size > kMaxSize || !block->hasRoom(end + size)) return false;
        write(block->text() + end);
        block->text()[end + size] = '\0';
        m_heap.size = end + size;
        return true;
    }
    void release() noexcept {
        if (isHeap()) releaseBlock(m_heap.block);
    }
    void initHeap(const char* text, std::size_t size);
    void initShared(const String& other);
    String& appendSlow(const char* text, std::size_t size);
    static Block* newBlock(std::size_t capacity);
    void growBlock(std::size_t capacity);
    static void releaseBlock(Block* block) noexcept;
    std::size_t grownCapacity(std::size_t needed) const;

    union {
        char m_inline[kInlineCapacity + 1];
        Heap m_heap;
    };
};

// The one text and the other behind it; null is empty.
SV_API String operator+(const String& a, std::string_view b);
SV_API String operator+(std::string_view a, const String& b);
inline String operator+(const String& a, const String& b) { return a + std::string_view(b); }
inline String operator+(const String& a, const char* b) { return a + std::string_view(b ? b : ""); }
inline String operator+(const char* a, const String& b) { return std::string_view(a ? a : "") + b; }
inline String operator+(const String& a, char b) { return a + std::string_view(&b, 1); }
inline String operator+(String&& a, std::string_view b) {
    return static_cast<String&&>(a.append(b));
}
inline String operator+(String&& a, const String& b) {
    return static_cast<String&&>(a.append(b.data(), b.size()));
}
inline String operator+(String&& a, const char* b) { return static_cast<String&&>(a += b); }
inline String operator+(String&& a, char b) { return static_cast<String&&>(a += b); }

// Writes all bytes, NUL bytes too, with the stream's width and fill.
SV_API std::ostream& operator<<(std::ostream& stream, const String& text);

// The decimal integer at the start of `text` behind white space and a sign; 0
// when there is none or `text` is null, the nearest limit beyond 32 bits.
SV_API int h_atoi(const char* text) noexcept;
SV_API long h_atol(const char* text) noexcept;
inline int h_atoi(const String& text) noexcept { return h_atoi(text.c_str()); }
inline long h_atol(const String& text) noexcept { return h_atol(text.c_str()); }

// Between the process code page and UTF-8. Code page bytes without a character
// become U+FFFD or the control character of that number, as the system has it;
// characters that the code page lacks, and malformed UTF-8, become "?".
SV_API String ConvertStringToUTF8String(const String& text);
SV_API String ConvertUTF8StringToString(const String& utf8);

}  // namespace SV

// By the bytes, as `std::hash` of an equal `std::string_view`.
template <>
struct std::hash<SV::String> {
    // Equal texts, equal numbers.
    std::size_t operator()(const SV::String& text) const noexcept {
        return std::hash<std::string_view>()(text);
    }
};
