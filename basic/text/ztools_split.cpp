// Splitting text, and looking for single characters.

#include <algorithm>
#include <cstring>

#include "text/bytescan.h"
#include "zbasic/ztools.h"

namespace {

class OneByte {
public:
    explicit OneByte(char c) : m_c(c) {}
    __m128i operator()(__m128i bytes) const { return isByte(bytes, m_c); }
    bool operator()(char c) const { return c == m_c; }

private:
    char m_c;
};

// Hands a text's tokens to `tokens` one by one.
class Splitter {
public:
    Splitter(const SV::String& text, ISequence<SV::String>& tokens)
        : m_text(text), m_from(text.begin()), m_end(text.end()), m_tokens(tokens) {}

    void split(std::string_view separator) {
        const std::size_t size = separator.size();
        for (std::size_t at; (at = rest().find(separator)) != std::string_view::npos;) {
            append(m_from + at, size);
        }
        appendLast();
    }
    void split(char separator) {
        // The search for the first is faster where there is none for long.
        const char* const first = findByte(m_from, m_end, OneByte(separator));
        forEachByte(first, m_end, OneByte(separator), [this](const char* at) { append(at, 1); });
        appendLast();
    }

private:
    std::string_view rest() const { return {m_from, m_end}; }
    void appendToken(const char* end) {
        const auto size = static_cast<std::size_t>(end - m_from);
        if (m_end - m_from >= static_cast<std::ptrdiff_t>(SV::String::kInlineCapacity)) {
            m_token.assignPadded(m_from, size);
        } else {
            m_token.assign(m_from, size);
        }
        m_tokens.append(m_token);
    }
    void appendLast() {
        if (m_from != m_text.begin()) return appendToken(m_end);
        m_tokens.append(m_text);  // nothing was cut off: the token shares its block
    }
    void append(const char* end, std::size_t separatorSize) {
        appendToken(end);
        m_from = end + separatorSize;
    }

    const SV::String& m_text;
    const char* m_from;
    const char* const m_end;
    ISequence<SV::String>& m_tokens;
    SV::String m_token;
};

template <class Separator>
void splitInto(ISequence<SV::String>& tokens, const SV::String& text, Separator separator) {
    // `text` may be an element of `tokens`.
    // NOLINTNEXTLINE(performance-unnecessary-copy-initialization)
    const SV::String source = text;
    tokens.clear();
    Splitter(source, tokens).split(separator);
}

}  // namespace

void Zel_SplitIntoTokens(const SV::String& text, const char* separator,
                         ISequence<SV::String>& tokens) {
    const SV::String searched = separator;  // may lie in an element as well
    if (searched.size() <= 1) return Zel_SplitIntoTokens(text, searched[0], tokens);
    splitInto<std::string_view>(tokens, text, searched);
}

void Zel_SplitIntoTokens(const SV::String& text, char separator, ISequence<SV::String>& tokens) {
    if (separator == '\0') return tokens.clear();
    splitInto(tokens, text, separator);
}

void zel_getuntil(const char* text, char stop, SV::String& out) {
    const std::string_view source = text ? text : "";
    const std::size_t at = source.find(stop);
    out.assign(source.substr(0, at == std::string_view::npos ? at : at + 1));
}

int zel_charcount(const char* text, char c) {
    const std::string_view source = text ? text : "";
    return static_cast<int>(countBytes(source.data(), source.data() + source.size(), OneByte(c)));
}

void zel_charreplace(char* text, char from, char to) {
    if (!text || from == to) return;
    // Only what changes is written: the rest may lie where nothing can be.
    std::replace(text, text + std::strlen(text), from, to);
}
