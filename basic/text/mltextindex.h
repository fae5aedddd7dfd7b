// From a text to the resource that has it.

#pragma once

#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

struct MlLanguage;

// A hash table over all texts of languages whose tables stay as they are while
// it lives. A slot holds where the text lies, and a part of its hash so that
// other texts are seldom looked at.
class MlTextIndex {
public:
    explicit MlTextIndex(std::span<const MlLanguage> languages);

    // The highest id in the highest language that has the text; 0 when none has.
    std::uint16_t find(std::string_view text) const;

private:
    struct Slot {
        std::uint32_t tag = 0;    // 0: free
        std::uint16_t place = 0;  // in `m_languages`
        std::uint16_t id = 0;
    };

    // The slot of the text, or the free one where it belongs.
    std::size_t slotOf(std::string_view text, std::uint32_t& tag) const;
    bool holds(const Slot& slot, std::string_view text) const;

    std::span<const MlLanguage> m_languages;
    std::vector<Slot> m_slots;  // a power of two, at most three quarters in use
};
