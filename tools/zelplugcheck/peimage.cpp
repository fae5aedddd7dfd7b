#include "peimage.h"

#include <algorithm>

namespace zelplugcheck {

namespace {

constexpr std::uint16_t kX64 = 0x8664;
constexpr std::uint16_t kDllFlag = 0x2000;
constexpr std::uint16_t kPe32Plus = 0x020B;

// Offsets in the structures of the format.
constexpr std::uint64_t kPeOffset = 0x3C;
constexpr std::uint64_t kFileHeader = 4;  // behind the signature
constexpr std::uint64_t kSectionCount = kFileHeader + 2;
constexpr std::uint64_t kOptionalSize = kFileHeader + 16;
constexpr std::uint64_t kFlags = kFileHeader + 18;
constexpr std::uint64_t kOptionalHeader = kFileHeader + 20;
constexpr std::uint64_t kDirectoryCount = kOptionalHeader + 108;
constexpr std::uint64_t kExportDirectory = kOptionalHeader + 112;
constexpr std::uint64_t kSectionSize = 40;

// The little-endian number at `offset`; 0 outside.
template <typename Number>
Number numberAt(std::string_view bytes, std::uint64_t offset) {
    if (offset > bytes.size() || bytes.size() - offset < sizeof(Number)) return 0;
    Number number = 0;
    for (std::size_t i = sizeof(Number); i-- > 0;) {
        const auto byte = static_cast<unsigned char>(bytes[static_cast<std::size_t>(offset) + i]);
        number = static_cast<Number>(number << 8 | byte);
    }
    return number;
}

constexpr auto word = numberAt<std::uint16_t>;
constexpr auto dword = numberAt<std::uint32_t>;

bool skip(std::string_view& code, std::string_view bytes, std::size_t more = 0) {
    if (!code.starts_with(bytes) || code.size() < bytes.size() + more) return false;
    code.remove_prefix(bytes.size() + more);
    return true;
}

// "mov eax, number" or "xor eax, eax", with what compilers put around it.
std::optional<std::int32_t> constantIn(std::string_view code) {
    skip(code, "\xF3\x0F\x1E\xFA");  // endbr64
    if (skip(code, "\x55") && !skip(code, "\x48\x89\xE5")) skip(code, "\x48\x8B\xEC");
    skip(code, "\x48\x83\xEC", 1);  // sub rsp, n
    std::int32_t value = 0;
    if (code.starts_with('\xB8')) {
        value = static_cast<std::int32_t>(dword(code, 1));
        if (!skip(code, "\xB8", 4)) return std::nullopt;
    } else if (!skip(code, "\x31\xC0") && !skip(code, "\x33\xC0")) {
        return std::nullopt;
    }
    skip(code, "\x48\x83\xC4", 1);  // add rsp, n
    skip(code, "\x5D");
    if (!code.starts_with('\xC3')) return std::nullopt;
    return value;
}

}  // namespace

PeImage::PeImage(std::string bytes) : m_bytes(std::move(bytes)) { readHeaders(); }

void PeImage::readHeaders() {
    const std::string_view all(m_bytes);
    const std::uint64_t start = dword(all, kPeOffset);
    if (!all.starts_with("MZ") || start > all.size()) return;
    const std::string_view header = all.substr(static_cast<std::size_t>(start));
    if (!header.starts_with(std::string_view("PE\0\0", 4))) return;
    m_isPe = true;
    m_machine = word(header, kFileHeader);
    m_isDll = (word(header, kFlags) & kDllFlag) != 0;
    m_isX64 = m_machine == kX64 && word(header, kOptionalHeader) == kPe32Plus;
    if (!m_isX64) return;
    readSections(start + kOptionalHeader + word(header, kOptionalSize),
                 word(header, kSectionCount));
    if (dword(header, kDirectoryCount) == 0) return;
    readExports(dword(header, kExportDirectory), dword(header, kExportDirectory + 4));
}

void PeImage::readSections(std::uint64_t table, unsigned count) {
    for (unsigned i = 0; i < count && table + kSectionSize <= m_bytes.size(); ++i) {
        // What lies in the file may be less or more than what is mapped.
        const std::uint32_t size = std::min(dword(m_bytes, table + 8), dword(m_bytes, table + 16));
        m_sections.push_back({dword(m_bytes, table + 12), size, dword(m_bytes, table + 20)});
        table += kSectionSize;
    }
}

std::string_view PeImage::at(std::uint32_t address) const {
    for (const Section& section : m_sections) {
        if (address < section.address || address - section.address >= section.size) continue;
        const std::uint64_t start = std::uint64_t{section.offset} + (address - section.address);
        if (start >= m_bytes.size()) return {};
        return std::string_view(m_bytes).substr(static_cast<std::size_t>(start),
                                                section.size - (address - section.address));
    }
    return {};
}

std::string_view PeImage::nameAt(std::uint32_t address) const {
    const std::string_view bytes = at(address);
    const std::size_t size = bytes.find('\0');
    return size == bytes.npos ? std::string_view() : bytes.substr(0, size);
}

void PeImage::readExports(std::uint32_t address, std::uint32_t size) {
    const std::string_view directory = at(address);
    const std::uint32_t functionCount = dword(directory, 20);
    const std::string_view functions = at(dword(directory, 28));
    const std::string_view names = at(dword(directory, 32));
    const std::string_view ordinals = at(dword(directory, 36));
    const std::uint64_t count = std::min<std::uint64_t>(dword(directory, 24), names.size() / 4);
    for (std::uint64_t i = 0; i < count; ++i) {
        const std::string_view name = nameAt(dword(names, 4 * i));
        const std::uint16_t ordinal = word(ordinals, 2 * i);
        if (name.empty() || ordinal >= functionCount) continue;
        const std::uint32_t function = dword(functions, std::uint64_t{4} * ordinal);
        const bool isElsewhere = function >= address && function - address < size;
        m_exports.emplace(name, isElsewhere ? 0 : function);
    }
}

std::optional<std::int32_t> PeImage::constantOf(std::string_view name) const {
    const auto found = m_exports.find(name);
    if (found == m_exports.end() || found->second == 0) return std::nullopt;
    std::uint32_t address = found->second;
    std::string_view code = at(address);
    if (code.starts_with('\xE9')) {  // a jump to the function itself
        address += 5 + dword(code, 1);
        code = at(address);
    }
    return constantIn(code);
}

}  // namespace zelplugcheck
