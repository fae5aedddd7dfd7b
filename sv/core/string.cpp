#include "sv/string.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <cstdlib>
#include <functional>
#include <limits>
#include <new>
#include <ostream>
#include <stdexcept>

#include "sv/ascii.h"

namespace SV {

namespace {

// Blocks of less are quicker to get and copy to than to enlarge where they lie.
constexpr std::size_t kEnlargedFrom = 512;
// What a text is given beside the double of what it has: the first block then serves for long.
constexpr std::size_t kFirstGrowth = 64;

const char* skipSpace(const char* text, const char* end) {
    while (text != end && IsAsciiSpace(*text)) ++text;
    return text;
}

// Behind an optional "+" that is not followed by a further sign: `from_chars` takes only "-".
const char* skipPlus(const char* text, const char* end) {
    return text != end && *text == '+' && (text + 1 == end || text[1] != '-') ? text + 1 : text;
}

std::int32_t prefixInteger(const char* text) noexcept {
    if (!text) return 0;
    const char* const end = text + std::strlen(text);
    const char* const start = skipPlus(skipSpace(text, end), end);
    std::int32_t value = 0;
    if (std::from_chars(start, end, value).ec == std::errc::result_out_of_range) {
        using Limits = std::numeric_limits<std::int32_t>;
        value = *start == '-' ? Limits::min() : Limits::max();
    }
    return value;
}

}  // namespace

String::Block* String::newBlock(std::size_t capacity) {
    if (capacity > kMaxSize) throw std::length_error("SV::String");
    void* const memory = std::malloc(sizeof(Block) + capacity + 1);
    if (!memory) throw std::bad_alloc();
    return new (memory) Block{1, capacity};
}

// Of a text that no copy shares. The system can often enlarge a block where it lies.
void String::growBlock(std::size_t capacity) {
    if (capacity > kMaxSize) throw std::length_error("SV::String");
    void* const memory = std::realloc(m_heap.block, sizeof(Block) + capacity + 1);
    if (!memory) throw std::bad_alloc();
    m_heap.block = new (memory) Block{1, capacity};
}

void String::releaseBlock(Block* block) noexcept {
    // The only owner need not write the counter: nobody else can reach the block.
    if (block->owners.load(std::memory_order_acquire) != 1 &&
        block->owners.fetch_sub(1, std::memory_order_acq_rel) != 1) {
        return;
    }
    block->~Block();
    std::free(block);
}

void String::initHeap(const char* text, std::size_t size) {
    Block* const block = newBlock(size);
    std::memcpy(block->text(), text, size);
    setHeap(block, size);
}

void String::initShared(const String& other) {
    if (other.m_heap.size <= kInlineCapacity) {
        std::memcpy(m_inline, other.data(), other.m_heap.size);
        setInline(other.m_heap.size);
        return;
    }
    other.m_heap.block->addOwner();
    m_heap = other.m_heap;
}

String::String(std::size_t count, char c) {
    setInline(0);
    append(count, c);
}

String& String::operator=(const String& other) {
    if (this == &other) return *this;
    if (other.size() <= kInlineCapacity) return assign(other.data(), other.size());
    String copy(other);
    return *this = static_cast<String&&>(copy);
}

void String::clear() noexcept {
    if (isHeap() && isUnique()) {
        setHeap(m_heap.block, 0);
        return;
    }
    release();
    setInline(0);
}

std::size_t String::grownCapacity(std::size_t needed) const {
    const std::size_t capacity = this->capacity();
    return needed <= capacity ? capacity
                              : std::max(needed, std::min(2 * capacity + kFirstGrowth, kMaxSize));
}

void String::reserve(std::size_t capacity) {
    const bool isOwner = isHeap() && isUnique();
    if (isOwner) m_heap.block->setUnshared();
    if ((isOwner || !isHeap()) && capacity <= this->capacity()) return;
    if (isOwner && this->capacity() >= kEnlargedFrom) return growBlock(capacity);
    const std::size_t length = size();
    Block* const block = newBlock(std::max(capacity, length));
    std::memcpy(block->text(), data(), length);
    release();
    setHeap(block, length);
}

String& String::appendSlow(const char* text, std::size_t size) {
    const std::size_t length = this->size();
    if (size > kMaxSize - length) throw std::length_error("SV::String");
    const bool isOwnText = !std::less<>()(text, begin()) && std::less<>()(text, end());
    if (isOwnText) return append(String(text, size));  // its block may not stay where it is
    reserve(grownCapacity(length + size));
    return append(text, size);
}

String& String::append(std::size_t count, char c) {
    if (count > kMaxSize - size()) throw std::length_error("SV::String");
    const auto fill = [count, c](char* end) noexcept { std::memset(end, c, count); };
    if (!appendInPlace(count, fill)) {
        reserve(grownCapacity(size() + count));
        appendInPlace(count, fill);
    }
    return *this;
}

String& String::assign(const char* text, std::size_t size) {
    if (isHeap() ? !isUnique() || size > m_heap.block->capacity() : size > kInlineCapacity) {
        return *this = String(text, size);
    }
    char* const target = isHeap() ? m_heap.block->text() : m_inline;
    if (size) std::memmove(target, text, size);
    if (isHeap()) {
        setHeap(m_heap.block, size);
    } else {
        setInline(size);
    }
    return *this;
}

String& String::replace(std::size_t pos, std::size_t count, std::string_view text) {
    const std::string_view old = *this;
    pos = std::min(pos, old.size());
    count = std::min(count, old.size() - pos);
    String changed;
    changed.reserve(old.size() - count + text.size());
    changed.append(old.substr(0, pos)).append(text).append(old.substr(pos + count));
    return *this = static_cast<String&&>(changed);
}

String String::substr(std::size_t pos, std::size_t count) const {
    const std::string_view text = *this;
    return String(text.substr(std::min(pos, text.size()), count));
}

String::operator double() const noexcept {
    const char* const last = end();
    const char* const start = skipPlus(skipSpace(begin(), last), last);
    double value = 0;
    const auto [stop, error] = std::from_chars(start, last, value);
    if (error == std::errc::result_out_of_range) {
        const std::string_view number(start, static_cast<std::size_t>(stop - start));
        const std::size_t exponent = number.find_first_of("eE");
        const bool isTiny = exponent != number.npos && number.substr(exponent + 1).starts_with('-');
        const double magnitude = isTiny ? 0.0 : std::numeric_limits<double>::infinity();
        value = *start == '-' ? -magnitude : magnitude;
    }
    return value;
}

String operator+(const String& a, std::string_view b) {
    String sum;
    sum.reserve(a.size() + b.size());
    return sum.append(a.data(), a.size()).append(b);
}

String operator+(std::string_view a, const String& b) {
    String sum;
    sum.reserve(a.size() + b.size());
    return sum.append(a).append(b.data(), b.size());
}

std::ostream& operator<<(std::ostream& stream, const String& text) {
    return stream << std::string_view(text);
}

int h_atoi(const char* text) noexcept { return prefixInteger(text); }

long h_atol(const char* text) noexcept { return prefixInteger(text); }

}  // namespace SV
