#include "text/mltextindex.h"

#include <bit>
#include <functional>

#include "text/mlcontainer.h"

MlTextIndex::MlTextIndex(std::span<const MlLanguage> languages) : m_languages(languages) {
    std::size_t count = 0;
    for (const MlLanguage& language : languages) count += language.table->count();
    m_slots.resize(std::bit_ceil(count + count / 3 + 1));

    for (std::size_t place = 0; place < languages.size(); ++place) {
        for (std::uint32_t id = 0; id <= 0xFFFF; ++id) {
            const SV::String& text = (*languages[place].table)[static_cast<std::uint16_t>(id)];
            if (text.empty()) continue;
            std::uint32_t tag = 0;
            Slot& slot = m_slots[slotOf(text, tag)];
            // Relied on by callers: the last one wins, so a slot in use is taken over.
            slot = {tag, static_cast<std::uint16_t>(place), static_cast<std::uint16_t>(id)};
        }
    }
}

std::uint16_t MlTextIndex::find(std::string_view text) const {
    std::uint32_t tag = 0;
    return m_slots[slotOf(text, tag)].id;  // 0 in a free one
}

std::size_t MlTextIndex::slotOf(std::string_view text, std::uint32_t& tag) const {
    const std::uint64_t hash = std::hash<std::string_view>()(text);
    tag = static_cast<std::uint32_t>(hash >> 32) | 1;
    const std::size_t mask = m_slots.size() - 1;
    std::size_t at = hash & mask;
    while (m_slots[at].tag != 0 && !(m_slots[at].tag == tag && holds(m_slots[at], text))) {
        at = (at + 1) & mask;
    }
    return at;
}

bool MlTextIndex::holds(const Slot& slot, std::string_view text) const {
    return (*m_languages[slot.place].table)[slot.id] == text;
}
