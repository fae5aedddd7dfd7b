// A graph with its attributes, compact enough for millions of elements.

#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace zelhost {

using KeyId = std::uint32_t;

// Keys that every graph knows under these numbers.
enum WellKnownKey : KeyId {
    kLabel,
    kName,
    kId,
    kSource,
    kTarget,
    kGraph,
    kNode,
    kEdge,
    kDirected,
    kGraphics,
    kX,
    kY,
    kW,
    kH,
    kDuration,
    kChanged,
};

// Numbers the names of attributes, from 0 upwards.
class KeyTable {
public:
    KeyTable();

    std::optional<KeyId> find(std::string_view name) const;
    KeyId add(std::string_view name);  // the number it has already, or a new one
    std::string_view name(KeyId key) const { return m_names[key]; }
    std::size_t size() const { return m_names.size(); }

private:
    struct Slot {
        std::uint64_t code;  // see `codeOf`
        std::uint32_t size;  // of the name
        KeyId key;
    };

    std::size_t slotOf(std::string_view name) const;
    void grow();

    std::deque<std::string> m_names;
    std::vector<Slot> m_slots;  // open addressing, at most half full
};

enum class ValueType : std::uint8_t { integer, real, text, list };

// One key with its value; the texts of short values lie in the object itself.
class Attribute {
public:
    KeyId key() const { return m_key; }
    ValueType type() const { return m_type; }
    std::int64_t integer() const { return m_integer; }  // of an `integer`

    // How many entries the attribute takes in its sequence: itself and all that lies in it.
    std::size_t extent() const { return m_type == ValueType::list ? m_size + 1u : 1u; }

private:
    friend class AttributeSequence;
    static constexpr std::size_t kInlineSize = 8;
    static constexpr KeyId kMostKeys = (KeyId{1} << 30) - 1;

    Attribute(KeyId key, ValueType type) : m_key(key & kMostKeys), m_type(type) {}

    KeyId m_key : 30;
    ValueType m_type : 2;
    std::uint32_t m_size = 0;  // of a text in bytes; of a list in entries behind it
    union {
        std::int64_t m_integer;
        std::uint64_t m_offset;
        char m_inline[kInlineSize];
    };
};

using AttributeSpan = std::span<const Attribute>;

// Attributes in the order of the file, what lies in a list directly behind the list.
class AttributeSequence {
public:
    void reserve(std::size_t attributes) { m_attributes.reserve(attributes); }
    void addInteger(KeyId key, std::int64_t value);
    void addReal(KeyId key, std::string_view spelling);  // kept as it is spelled
    void addText(KeyId key, std::string_view utf8);
    std::size_t beginList(KeyId key);
    void endList(std::size_t list);  // what `beginList` gave

    std::size_t size() const { return m_attributes.size(); }
    AttributeSpan all() const { return m_attributes; }
    AttributeSpan range(std::size_t first, std::size_t count) const {
        return all().subspan(first, count);
    }

    // Of a text (UTF-8) or of a real (its spelling). Valid until something is added.
    std::string_view text(const Attribute& attribute) const;

private:
    void addBytes(KeyId key, ValueType type, std::string_view bytes);

    std::vector<Attribute> m_attributes;
    std::string m_texts;
};

// The first attribute of that key that lies directly in `attributes`; null when there is none.
const Attribute* findAttribute(AttributeSpan attributes, KeyId key);

// What lies in the list `attribute`, which is an element of a sequence.
inline AttributeSpan contentOf(const Attribute& attribute) {
    return {&attribute + 1, attribute.extent() - 1};
}

struct Node {
    std::int64_t id;
    std::uint32_t firstAttribute;
    std::uint32_t attributeCount;  // lists and what lies in them included
};

struct Edge {
    std::uint32_t source;  // index of a node
    std::uint32_t target;
    std::uint32_t firstAttribute;
    std::uint32_t attributeCount;
};

// All texts are UTF-8. `id` of a node and `source` and `target` of an edge are members
// here, not attributes; all else that the file holds is an attribute.
struct Graph {
    KeyTable keys;
    AttributeSequence fileAttributes;   // beside the graph: "Creator", "Version", ...
    AttributeSequence graphAttributes;  // of the graph itself: "directed", "label", ...
    AttributeSequence attributes;       // of its nodes and edges
    std::vector<Node> nodes;
    std::vector<Edge> edges;

    AttributeSpan of(const Node& node) const {
        return attributes.range(node.firstAttribute, node.attributeCount);
    }
    AttributeSpan of(const Edge& edge) const {
        return attributes.range(edge.firstAttribute, edge.attributeCount);
    }

    bool isDirected() const;  // graphs are undirected unless they say otherwise

    // What a user knows the node by: its `label`, else its `name`, else its `id`.
    std::string caption(const Node& node) const;
    std::string label(const Edge& edge) const;  // empty when it has none

    // Keeps the nodes whose caption is wanted, and the edges between them.
    void keepNodes(const std::function<bool(std::string_view caption)>& isWanted);
    void keepNodesThat(const std::function<bool(const Node& node)>& areWanted);
};

}  // namespace zelhost
