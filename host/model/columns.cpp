#include "model/columns.h"

#include <algorithm>
#include <limits>

namespace zelhost {

namespace {

constexpr std::uint32_t kRoot = 0xFFFFFFFF;

ColumnType typeOf(const Attribute& value) {
    if (value.type() == ValueType::real) return ColumnType::real;
    if (value.type() != ValueType::integer) return ColumnType::text;
    using Limits = std::numeric_limits<std::int32_t>;
    const bool isShort = value.integer() >= Limits::min() && value.integer() <= Limits::max();
    return isShort ? ColumnType::int32 : ColumnType::int64;
}

}  // namespace

std::uint32_t ColumnTable::placeOf(std::uint32_t parent, KeyId key, std::uint32_t occurrence) {
    const PlaceKey placeKey{(std::uint64_t{parent} << 32) | key, occurrence};
    const auto next = static_cast<std::uint32_t>(m_places.size());
    const auto [found, isNew] = m_index.try_emplace(placeKey, next);
    if (isNew) m_places.push_back({parent, key, occurrence, kNoColumn});
    return found->second;
}

// Where the key goes that comes next in that list.
std::uint32_t ColumnTable::nextPlace(std::uint32_t parent, KeyId key, std::uint64_t list) {
    const std::uint32_t first = placeOf(parent, key, 1);
    Place& counter = m_places[first];
    counter.countInList = counter.list == list ? counter.countInList + 1 : 1;
    counter.list = list;
    return counter.countInList == 1 ? first : placeOf(parent, key, counter.countInList);
}

std::string ColumnTable::nameOf(std::uint32_t place) const {
    std::vector<std::string> parts;
    for (; place != kRoot; place = m_places[place].parent) {
        const Place& at = m_places[place];
        parts.emplace_back(m_keys.name(at.key));
        if (at.occurrence > 1) parts.back() += "." + std::to_string(at.occurrence);
    }
    std::string name = parts.back();
    for (std::size_t i = parts.size() - 1; i-- > 0;) name += "." + parts[i];
    return name;
}

std::size_t ColumnTable::columnOf(std::uint32_t place) {
    if (m_places[place].column == kNoColumn) {
        m_places[place].column = static_cast<std::uint32_t>(m_columns.size());
        m_columns.push_back({nameOf(place)});
    }
    return m_places[place].column;
}

void ColumnTable::visitValues(const AttributeSequence& sequence, AttributeSpan attributes,
                              const Visitor& visitor) {
    m_open.assign(1, {attributes.size(), m_list, kRoot});
    for (std::size_t i = 0; i < attributes.size(); ++i) {
        while (m_open.back().end == i) m_open.pop_back();
        const Attribute& attribute = attributes[i];
        const OpenList& outer = m_open.back();
        const std::uint32_t place = nextPlace(outer.place, attribute.key(), outer.list);
        if (attribute.type() == ValueType::list) {
            m_open.push_back({i + attribute.extent(), ++m_lists, place});
        } else {
            visitor(columnOf(place), sequence, attribute);
        }
    }
}

void ColumnTable::widen(std::size_t column, const Attribute& value) {
    m_columns[column].type = std::max(m_columns[column].type, typeOf(value));
}

}  // namespace zelhost
