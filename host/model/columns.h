// Attributes as the columns of a table.

#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <unordered_map>
#include <vector>

#include "model/graph.h"

namespace zelhost {

enum class ColumnType { none, int32, int64, real, text };

struct Column {
    std::string name;
    ColumnType type = ColumnType::none;  // the narrowest that holds all values
};

// Gives every value of an element a column, so that no two values share one. Keys of nested
// lists are joined by a point, and a key that repeats in its list is counted:
//
//     graphics [ point [ x 1 ] point [ x 2 ] ]    graphics.point.x, graphics.point.2.x
class ColumnTable {
public:
    using Visitor = std::function<void(std::size_t column, const AttributeSequence& sequence,
                                       const Attribute& value)>;

    explicit ColumnTable(const KeyTable& keys) : m_keys(keys) {}

    // Starts the next element; `visitValues` may come several times for one.
    void beginElement() { m_list = ++m_lists; }
    void visitValues(const AttributeSequence& sequence, AttributeSpan attributes,
                     const Visitor& visitor);

    // Makes the columns' types hold the value.
    void widen(std::size_t column, const Attribute& value);

    const std::vector<Column>& columns() const { return m_columns; }

private:
    static constexpr std::uint32_t kNoColumn = 0xFFFFFFFF;
    // A place in the tree of keys, where a value or a list may be.
    struct Place {
        std::uint32_t parent;
        KeyId key;
        std::uint32_t occurrence;  // in its list, from 1
        std::uint32_t column;      // `kNoColumn` until it has a value
        std::uint64_t list = 0;    // in which the key was met last
        std::uint32_t countInList = 0;
    };
    struct OpenList {
        std::size_t end;
        std::uint64_t list;
        std::uint32_t place;
    };

    std::uint32_t placeOf(std::uint32_t parent, KeyId key, std::uint32_t occurrence);
    std::uint32_t nextPlace(std::uint32_t parent, KeyId key, std::uint64_t list);
    std::size_t columnOf(std::uint32_t place);
    std::string nameOf(std::uint32_t place) const;

    struct PlaceKey {
        std::uint64_t parentAndKey;
        std::uint32_t occurrence;
        bool operator==(const PlaceKey&) const = default;
    };
    struct PlaceHash {
        std::size_t operator()(const PlaceKey& key) const {
            return static_cast<std::size_t>(
                (key.parentAndKey * 31 + key.occurrence) * 0x9E3779B97F4A7C15u >> 16);
        }
    };

    const KeyTable& m_keys;
    std::vector<Place> m_places;
    std::unordered_map<PlaceKey, std::uint32_t, PlaceHash> m_index;
    std::vector<Column> m_columns;
    std::vector<OpenList> m_open;
    std::uint64_t m_lists = 0;
    std::uint64_t m_list = 0;  // of the element itself
};

}  // namespace zelhost
