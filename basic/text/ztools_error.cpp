// Texts of error codes.

#include <map>

#include "zbasic/ztools.h"

struct ZelStringAcceleratorTable::Elements {
    std::map<std::size_t, SV::String> texts;  // whose nodes stay where they are
    const SV::String nothing;
};

// Never released: references into it are good until the process ends.
ZelStringAcceleratorTable::ZelStringAcceleratorTable() : m_elements(new Elements) {}

ZelStringAcceleratorTable& ZelStringAcceleratorTable::GetGlobal() {
    static ZelStringAcceleratorTable table;
    return table;
}

void ZelStringAcceleratorTable::SetElement(std::size_t index, const SV::String& text) {
    m_elements->texts[index] = text;
}

bool ZelStringAcceleratorTable::HasElement(std::size_t index) const {
    return m_elements->texts.contains(index);
}

const SV::String& ZelStringAcceleratorTable::GetElement(std::size_t index) const {
    const auto found = m_elements->texts.find(index);
    return found == m_elements->texts.end() ? m_elements->nothing : found->second;
}

std::size_t Zel_GetErrorStringIndex(ZelErrorCode code) {
    constexpr std::int32_t kLastCode = 4998;
    const bool isKnown = code >= 1 && code <= kLastCode;
    return kUnknownErrorIndex + (isKnown ? static_cast<std::size_t>(code) : 0);
}

const SV::String& Zel_GetErrorString(ZelErrorCode code) {
    const ZelStringAcceleratorTable& table = ZelStringAcceleratorTable::GetGlobal();
    const std::size_t index = Zel_GetErrorStringIndex(code);
    return table.GetElement(table.HasElement(index) ? index : kUnknownErrorIndex);
}
