#include "zbasic/zsgml.h"

#include <algorithm>
#include <istream>
#include <memory>
#include <mutex>
#include <ostream>
#include <string>

#include "diag/librarytext.h"
#include "text/bytescan.h"

namespace {

constexpr std::uint32_t kBuiltInEntities = 11764;  // of the bytes from 128 on
constexpr std::size_t kLineLimit = 1000;
constexpr int kMostLines = 257;  // language and 256 entities
constexpr std::string_view kUsualLower = "\r\"&<>";

// What the map makes of a byte, ready for the search.
class MapBytes {
public:
    // The high bit for every byte that may be changed.
    __m128i operator()(__m128i bytes) const {
        const __m128i lower = _mm_or_si128(isMarkup(bytes), isByte(bytes, '\r'));
        return _mm_or_si128(_mm_or_si128(lower, bytes), m_unusual);
    }
    bool operator()(char byte) const { return m_isChanged[static_cast<unsigned char>(byte)]; }

    std::string_view replacement(char byte) const {
        return m_replacements[static_cast<unsigned char>(byte)];
    }

    void build(const SV::String (&entities)[256]) {
        m_unusual = _mm_setzero_si128();
        for (std::size_t byte = 0; byte < 256; ++byte) {
            const char c = static_cast<char>(byte);
            m_replacements[byte] = c == '\r' ? std::string_view() : entities[byte];
            m_isChanged[byte] = c == '\r' || !entities[byte].empty();
            const bool isUsual = byte >= 128 || kUsualLower.find(c) != std::string_view::npos;
            if (m_isChanged[byte] && !isUsual) m_unusual = _mm_set1_epi8(-1);
        }
    }

private:
    bool m_isChanged[256] = {};
    std::string_view m_replacements[256];  // into the entities of the map
    __m128i m_unusual = _mm_setzero_si128();
};

MapBytes g_mapBytes;

// Has one of several first conversions load the map.
template <class Load>
void loadFirst(const std::atomic<bool>& isLoaded, const Load& load) {
    static std::mutex mutex;
    if (isLoaded.load(std::memory_order_acquire)) return;
    const std::lock_guard lock(mutex);
    if (!isLoaded) load();
}

// The converted text in pieces: stretches as they are, and what the map has for a byte.
template <class Append>
void eachPiece(const SV::String& text, const Append& append) {
    for (const char* from = text.begin();; ++from) {
        const char* const at = findByte(from, text.end(), g_mapBytes);
        append(std::string_view(from, at));
        if (at == text.end()) return;
        append(g_mapBytes.replacement(*at));
        from = at;
    }
}

// Gathers short pieces for a stream in memory that stays in the processor's cache.
class StreamPieces {
public:
    explicit StreamPieces(std::ostream& stream) : m_stream(stream) {}

    void append(std::string_view piece) {
        if (piece.size() > sizeof m_buffer - m_size) flush();
        if (piece.size() > sizeof m_buffer) {
            m_stream << piece;
            return;
        }
        piece.copy(m_buffer + m_size, piece.size());
        m_size += piece.size();
    }
    void flush() {
        if (m_size > 0) m_stream << std::string_view(m_buffer, m_size);
        m_size = 0;
    }

private:
    std::ostream& m_stream;
    std::size_t m_size = 0;
    char m_buffer[8192];
};

// What is left of a line of the mapping file when blanks, line ends and comments are gone.
std::string meaningOf(std::string line) {
    if (line.size() > kLineLimit) line.resize(kLineLimit);
    std::erase_if(line, [](char c) { return c == ' ' || c == '\r' || c == '\n'; });
    return line.substr(0, line.find("//"));
}

}  // namespace

SV::String ZelSGMLString::g_aEntities[256];
std::atomic<bool> ZelSGMLString::g_bInitedCharMap = false;
std::int32_t ZelSGMLString::g_nMappingStartOffset = 128;
SV::String ZelSGMLString::g_sLanguage;
bool ZelSGMLString::g_bWarn = true;
ZelExportFileType ZelSGMLString::g_eCurExportFileType = ZelExportFileType(0);

ZelSGMLString::ZelSGMLString(const char* text) : m_text(text) {}
ZelSGMLString::ZelSGMLString(const SV::String& text) : m_text(text) {}
ZelSGMLString::ZelSGMLString(const ZelSGMLString&) = default;
ZelSGMLString::ZelSGMLString(ZelSGMLString&&) noexcept = default;
ZelSGMLString& ZelSGMLString::operator=(const ZelSGMLString&) = default;
ZelSGMLString& ZelSGMLString::operator=(ZelSGMLString&&) noexcept = default;
ZelSGMLString::~ZelSGMLString() = default;

bool ZelSGMLString::SetCharacterMap(std::istream* mapping) {
    g_bInitedCharMap = false;
    return __initCharMap(mapping);
}

const char* ZelSGMLString::GetLanguage() { return g_sLanguage.c_str(); }

void ZelSGMLString::SetExportFileType(ZelExportFileType type) { g_eCurExportFileType = type; }

void ZelSGMLString::EnableWarning(bool isEnabled) { g_bWarn = isEnabled; }

SV::String ZelSGMLString::GetSGMLString(const SV::String& text) {
    bool converted = false;
    const std::size_t size = __getConvertedLen(text, converted);
    if (!converted) return text;
    const auto buffer = std::make_unique_for_overwrite<char[]>(size + 1);
    __convertToBuf(text, buffer.get());
    return SV::String(buffer.get(), size);
}

std::ostream& operator<<(std::ostream& stream, const ZelSGMLString& text) {
    if (ZelSGMLString::g_eCurExportFileType == kExportFileTypeXml) {
        return stream << ZelSGMLString::XMLStr(text.m_text, true);
    }
    if (stream.width() != 0) {  // padding needs the whole
        const SV::String converted = ZelSGMLString::GetSGMLString(text.m_text);
        return converted.empty() ? stream : stream << std::string_view(converted);
    }
    loadFirst(ZelSGMLString::g_bInitedCharMap, [] { ZelSGMLString::__initCharMap(nullptr); });
    StreamPieces pieces(stream);
    eachPiece(text.m_text, [&pieces](std::string_view piece) { pieces.append(piece); });
    pieces.flush();
    return stream;
}

bool ZelSGMLString::__initCharMap(std::istream* mapping) {
    SV::String entities;
    bool isAsAsked = true;
    if (mapping) {
        isAsAsked = ReadSGMLMapping(*mapping, entities);
    } else {
        g_nMappingStartOffset = 128;
    }
    if (!mapping || !isAsAsked) {
        // Relied on by callers: the start offset of a rejected file stays, so that the built-in
        // entities then begin with byte 0.
        g_sLanguage = "DEFAULT";
        entities = libraryText(kBuiltInEntities);
    }
    if (g_nMappingStartOffset == 128) __createSub128Mapping();
    assignEntities(entities);
    g_mapBytes.build(g_aEntities);
    g_bInitedCharMap = true;
    return isAsAsked;
}

bool ZelSGMLString::ReadSGMLMapping(std::istream& mapping, SV::String& entities) {
    g_nMappingStartOffset = 128;
    SV::String language;
    int lines = 0;  // from the language on
    for (std::string line; lines <= kMostLines && std::getline(mapping, line);) {
        line = meaningOf(std::move(line));
        if (line.empty()) continue;
        if (lines == 0 && line == "MAP128") {
            g_nMappingStartOffset = 128;
        } else if (lines == 0 && line == "MAP256") {
            g_nMappingStartOffset = 0;
        } else if (lines++ == 0) {
            language = line;
        } else {
            entities.append(line) += ' ';
        }
    }
    const bool isComplete = lines == 257 - g_nMappingStartOffset;
    const bool isAccepted = isComplete || (g_nMappingStartOffset == 0 && !g_bWarn);
    if (isAccepted) g_sLanguage = language;
    return isAccepted;
}

void ZelSGMLString::__createSub128Mapping() {
    for (int byte = 0; byte < 128; ++byte) g_aEntities[byte].clear();
    g_aEntities[std::size_t{'"'}] = "&#34;";
    g_aEntities[std::size_t{'&'}] = "&amp;";
    g_aEntities[std::size_t{'<'}] = "&lt;";
    g_aEntities[std::size_t{'>'}] = "&gt;";
}

// One piece a byte from the start offset on; bytes without a piece get none.
void ZelSGMLString::assignEntities(std::string_view entities) {
    for (auto byte = g_nMappingStartOffset; byte < 256; ++byte) {
        entities.remove_prefix(std::min(entities.find_first_not_of(' '), entities.size()));
        const std::string_view piece = entities.substr(0, entities.find(' '));
        entities.remove_prefix(piece.size());
        g_aEntities[byte] = piece == "0" ? std::string_view() : piece;
    }
}

std::size_t ZelSGMLString::__getConvertedLen(const SV::String& text, bool& converted) {
    loadFirst(g_bInitedCharMap, [] { __initCharMap(nullptr); });
    std::size_t size = text.size();
    const char* at = findByte(text.begin(), text.end(), g_mapBytes);
    converted = at != text.end();
    for (; at != text.end(); at = findByte(at + 1, text.end(), g_mapBytes)) {
        size += g_mapBytes.replacement(*at).size() - 1;
    }
    return size;
}

void ZelSGMLString::__convertToBuf(const SV::String& text, char* buffer) {
    eachPiece(text,
              [&buffer](std::string_view piece) { buffer = std::ranges::copy(piece, buffer).out; });
    *buffer = '\0';
}
