#include "text/mlcontainer.h"

#include <algorithm>

#include "text/inputfile.h"
#include "text/mltextindex.h"
#include "zbasic/zmlstring.h"

namespace {

void setLength(int* length, std::string_view text) {
    if (length) *length = static_cast<int>(text.size());  // files hold the length in 31 bits
}

int positionOf(std::string_view part, std::string_view text) {
    const std::size_t position = text.find(part);
    return position == text.npos ? ZEL_MULTILANG_NOT_FOUND : static_cast<int>(position);
}

// Fewer bytes than `size` when the file ends, or fails, before.
std::size_t readUpTo(std::size_t size, char* bytes, const InputFile& file) {
    constexpr std::size_t kMostAtOnce = std::size_t{1} << 30;
    std::size_t sum = 0;
    while (sum < size) {
        const auto part = static_cast<std::int32_t>(std::min(size - sum, kMostAtOnce));
        const auto count = readInputFile(file.get(), bytes + sum, part);
        if (!count || *count == 0) break;
        sum += static_cast<std::size_t>(*count);
    }
    return sum;
}

}  // namespace

ZelLanguageContainer& ZelLanguageContainer::Instance() {
    // Never destroyed: work at process exit may still ask.
    static ZelLanguageContainer& container = *new ZelLanguageContainer;
    return container;
}

ZelLanguageContainer::ZelLanguageContainer() = default;
ZelLanguageContainer::~ZelLanguageContainer() = default;

MlStringTable& ZelLanguageContainer::table(std::uint16_t language) {
    m_publishedIndex = nullptr;  // it would not know what the table is about to get
    m_index.reset();
    const auto place = std::ranges::lower_bound(m_languages, language, {}, &MlLanguage::id);
    if (place != m_languages.end() && place->id == language) return *place->table;
    // Known by both or by none, also when there is no memory for one of them.
    const MlStringTable*& known = m_tables.writable(language);
    MlStringTable& made =
        *m_languages.insert(place, {language, std::make_unique<MlStringTable>()})->table;
    known = &made;
    return made;
}

void ZelLanguageContainer::clear() {
    m_publishedIndex = nullptr;
    m_index.reset();
    m_tables = {};
    m_languages.clear();
}

bool ZelLanguageContainer::equals(std::string_view text, std::uint16_t id, int* length) const {
    for (const MlLanguage& language : m_languages) {
        const SV::String& candidate = (*language.table)[id];
        if (candidate.empty() || candidate != text) continue;
        setLength(length, text);
        return true;
    }
    return false;
}

bool ZelLanguageContainer::startsWith(std::string_view text, std::uint16_t id, int* length) const {
    for (const MlLanguage& language : m_languages) {
        const SV::String& start = (*language.table)[id];
        if (start.empty() || !text.starts_with(start)) continue;
        setLength(length, start);
        return true;
    }
    return false;
}

int ZelLanguageContainer::searchForAny(std::string_view text, std::uint16_t id, int* length) const {
    int best = ZEL_MULTILANG_NOT_FOUND;
    for (const MlLanguage& language : m_languages) {
        const SV::String& part = (*language.table)[id];
        if (part.empty()) continue;
        const int position = positionOf(part, text);
        // Relied on by callers: the first language that has the resource writes `*length` even
        // when its text does not occur.
        if (best != ZEL_MULTILANG_NOT_FOUND && position >= best) continue;
        best = position;
        setLength(length, part);
    }
    return best;
}

std::uint16_t ZelLanguageContainer::findId(std::string_view text) const {
    return textIndex().find(text);
}

const MlTextIndex& ZelLanguageContainer::textIndex() const {
    const MlTextIndex* index = m_publishedIndex.load(std::memory_order_acquire);
    if (index) return *index;
    const std::lock_guard lock(m_indexMutex);
    if (!m_index) {
        m_index = std::make_unique<const MlTextIndex>(m_languages);
        m_publishedIndex.store(m_index.get(), std::memory_order_release);
    }
    return *m_index;
}

ZelMLResFileReader::ZelMLResFileReader(MlStringTable& table, const SV::String& path)
    : m_table(&table), m_path(path) {}

ZelMLResFileReader::~ZelMLResFileReader() = default;

bool ZelMLResFileReader::read(std::vector<char>& buffer) {
    const InputFile file(m_path.c_str());
    const auto size = file ? inputFileSize(file.get()) : std::nullopt;
    if (!size) return false;
    const auto room = static_cast<std::size_t>(*size);
    if (buffer.size() < room) buffer.resize(room);
    return m_table->add(buffer.data(), readUpTo(room, buffer.data(), file));
}
