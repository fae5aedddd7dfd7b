#include "model/graph.h"

#include <algorithm>
#include <cstring>
#include <initializer_list>
#include <limits>

namespace zelhost {

namespace {

constexpr const char* kWellKnownNames[] = {
    "label",    "name",     "id", "source", "target", "graph", "node",     "edge",
    "directed", "graphics", "x",  "y",      "w",      "h",     "duration", "changed"};
constexpr KeyId kNoKey = std::numeric_limits<KeyId>::max();
constexpr std::size_t kFirstSlots = 64;  // a power of two
constexpr std::size_t kPackedSize = 8;   // names up to that size are told apart by their code

template <typename Number>
std::uint64_t load(const char* bytes) {
    Number number;
    std::memcpy(&number, bytes, sizeof number);
    return number;
}

// Up to eight bytes, which with the size tell such names apart: nearly all keys are that short.
std::uint64_t packed(std::string_view name) {
    const char* const end = name.data() + name.size();
    if (name.size() >= 8) return load<std::uint64_t>(name.data());
    if (name.size() >= 4) {
        return load<std::uint32_t>(name.data()) | load<std::uint32_t>(end - 4) << 32;
    }
    if (name.size() >= 2) {
        return load<std::uint16_t>(name.data()) | load<std::uint16_t>(end - 2) << 16;
    }
    return name.empty() ? 0 : load<std::uint8_t>(name.data());
}

// Equal for equal names, and different for different names of one size up to 8.
std::uint64_t codeOf(std::string_view name) {
    if (name.size() <= kPackedSize) return packed(name);
    std::uint64_t hash = 0xCBF29CE484222325u;  // FNV-1a
    for (const char c : name) hash = (hash ^ static_cast<unsigned char>(c)) * 0x100000001B3u;
    return hash;
}

std::size_t slotHash(std::uint64_t code, std::size_t size) {
    const std::uint64_t hash = (code ^ size) * 0x9E3779B97F4A7C15u;
    return static_cast<std::size_t>(hash ^ (hash >> 32));
}

}  // namespace

KeyTable::KeyTable() : m_slots(kFirstSlots, Slot{0, 0, kNoKey}) {
    for (const char* name : kWellKnownNames) add(name);
}

std::size_t KeyTable::slotOf(std::string_view name) const {
    const std::uint64_t code = codeOf(name);
    const std::size_t mask = m_slots.size() - 1;
    std::size_t slot = slotHash(code, name.size()) & mask;
    for (; m_slots[slot].key != kNoKey; slot = (slot + 1) & mask) {
        const auto& [slotCode, size, key] = m_slots[slot];
        if (slotCode != code || size != name.size()) continue;
        if (size <= kPackedSize || m_names[key] == name) break;
    }
    return slot;
}

std::optional<KeyId> KeyTable::find(std::string_view name) const {
    const KeyId key = m_slots[slotOf(name)].key;
    return key == kNoKey ? std::nullopt : std::optional(key);
}

KeyId KeyTable::add(std::string_view name) {
    if (const std::optional<KeyId> known = find(name)) return *known;
    if (2 * (m_names.size() + 1) > m_slots.size()) grow();
    const KeyId key = static_cast<KeyId>(m_names.size());
    m_slots[slotOf(name)] = {codeOf(name), static_cast<std::uint32_t>(name.size()), key};
    m_names.emplace_back(name);
    return key;
}

void KeyTable::grow() {
    m_slots.assign(2 * m_slots.size(), Slot{0, 0, kNoKey});
    for (KeyId key = 0; key < m_names.size(); ++key) {
        const std::string& name = m_names[key];
        m_slots[slotOf(name)] = {codeOf(name), static_cast<std::uint32_t>(name.size()), key};
    }
}

void AttributeSequence::addInteger(KeyId key, std::int64_t value) {
    Attribute attribute(key, ValueType::integer);
    attribute.m_integer = value;
    m_attributes.push_back(attribute);
}

void AttributeSequence::addReal(KeyId key, std::string_view spelling) {
    addBytes(key, ValueType::real, spelling);
}

void AttributeSequence::addText(KeyId key, std::string_view utf8) {
    addBytes(key, ValueType::text, utf8);
}

void AttributeSequence::addBytes(KeyId key, ValueType type, std::string_view bytes) {
    Attribute attribute(key, type);
    attribute.m_size = static_cast<std::uint32_t>(bytes.size());
    if (bytes.size() <= Attribute::kInlineSize) {
        attribute.m_integer = 0;
        if (!bytes.empty()) std::memcpy(attribute.m_inline, bytes.data(), bytes.size());
    } else {
        attribute.m_offset = m_texts.size();
        m_texts.append(bytes);
    }
    m_attributes.push_back(attribute);
}

std::size_t AttributeSequence::beginList(KeyId key) {
    Attribute attribute(key, ValueType::list);
    attribute.m_integer = 0;
    m_attributes.push_back(attribute);
    return m_attributes.size() - 1;
}

void AttributeSequence::endList(std::size_t list) {
    m_attributes[list].m_size = static_cast<std::uint32_t>(m_attributes.size() - list - 1);
}

std::string_view AttributeSequence::text(const Attribute& attribute) const {
    if (attribute.m_size <= Attribute::kInlineSize) return {attribute.m_inline, attribute.m_size};
    return std::string_view(m_texts).substr(attribute.m_offset, attribute.m_size);
}

const Attribute* findAttribute(AttributeSpan attributes, KeyId key) {
    for (std::size_t i = 0; i < attributes.size(); i += attributes[i].extent()) {
        if (attributes[i].key() == key) return &attributes[i];
    }
    return nullptr;
}

bool Graph::isDirected() const {
    const Attribute* const directed = findAttribute(graphAttributes.all(), kDirected);
    return directed && directed->type() == ValueType::integer && directed->integer() != 0;
}

namespace {

// Of the first of these attributes that has one.
std::optional<std::string> textOf(const AttributeSequence& sequence, AttributeSpan attributes,
                                  std::initializer_list<KeyId> keys) {
    for (const KeyId key : keys) {
        const Attribute* const found = findAttribute(attributes, key);
        if (!found || found->type() == ValueType::list) continue;
        if (found->type() == ValueType::integer) return std::to_string(found->integer());
        return std::string(sequence.text(*found));
    }
    return std::nullopt;
}

}  // namespace

std::string Graph::caption(const Node& node) const {
    const std::optional<std::string> text = textOf(attributes, of(node), {kLabel, kName});
    return text ? *text : std::to_string(node.id);
}

std::string Graph::label(const Edge& edge) const {
    return textOf(attributes, of(edge), {kLabel}).value_or("");
}

void Graph::keepNodes(const std::function<bool(std::string_view caption)>& isWanted) {
    keepNodesThat([&](const Node& node) { return isWanted(caption(node)); });
}

void Graph::keepNodesThat(const std::function<bool(const Node& node)>& areWanted) {
    constexpr std::uint32_t kGone = std::numeric_limits<std::uint32_t>::max();
    std::vector<std::uint32_t> newIndex(nodes.size(), kGone);
    std::uint32_t kept = 0;
    for (std::size_t i = 0; i < nodes.size(); ++i) {
        if (!areWanted(nodes[i])) continue;
        newIndex[i] = kept;
        nodes[kept++] = nodes[i];
    }
    nodes.resize(kept);
    std::erase_if(edges, [&](Edge& edge) {
        edge.source = newIndex[edge.source];
        edge.target = newIndex[edge.target];
        return edge.source == kGone || edge.target == kGone;
    });
}

}  // namespace zelhost
