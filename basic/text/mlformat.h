// The multi-language string file, for its reader in the library and its writer in `zelml`.

#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

// Integers are little-endian and have 32 bits:
//     magic, version, { length, id, text of that many bytes }..., a length of 0 or less
// The bytes of texts are XORed with the key. Of an id the low 16 bits count.
namespace mlformat {

constexpr std::uint32_t kMagic = 0x05E105E1;
constexpr std::uint32_t kVersion = 0x39000;
constexpr unsigned char kKey = 0x5C;
constexpr std::uint32_t kKeyWord = 0x5C5C5C5C;  // for an integer on which the key was toggled

constexpr std::size_t kIntegerSize = 4;
constexpr std::size_t kHeaderSize = 2 * kIntegerSize;        // magic, version
constexpr std::size_t kRecordHeaderSize = 2 * kIntegerSize;  // length, id

inline std::uint32_t load(const char* bytes) {
    const auto byte = [bytes](int i) {
        return static_cast<std::uint32_t>(static_cast<unsigned char>(bytes[i])) << (8 * i);
    };
    return byte(0) | byte(1) | byte(2) | byte(3);
}

// Puts the key on `size` bytes, or takes it off.
inline void toggleKey(char* bytes, std::size_t size) {
    for (std::size_t i = 0; i < size; ++i) bytes[i] = static_cast<char>(bytes[i] ^ kKey);
}

enum class Header { Good, CutOff, WrongMagic, WrongVersion };

inline Header checkHeader(std::string_view file) {
    if (file.size() < kHeaderSize) return Header::CutOff;
    if (load(file.data()) != kMagic) return Header::WrongMagic;
    return load(file.data() + kIntegerSize) == kVersion ? Header::Good : Header::WrongVersion;
}

struct Record {
    std::size_t offset = 0;  // of the record; its text lies `kRecordHeaderSize` further
    std::uint32_t id = 0;
    std::size_t length = 0;
};

// Walks over the records of a file with a good header. `mask` is `kKeyWord` when
// the key was toggled on the file as a whole, which is the quick way to plain texts.
class Records {
public:
    enum class Step {
        Record,
        Terminator,  // the end as it should be
        EndOfFile,   // the file ends without a terminator, but behind a complete record
        CutOff,      // the file ends within a record
    };

    explicit Records(std::string_view file, std::uint32_t mask = 0) : m_file(file), m_mask(mask) {}

    // The next record; its offset is set in any case.
    Step next(Record& record) {
        record.offset = m_offset;
        const std::size_t rest = m_file.size() - m_offset;
        if (rest < kIntegerSize) return rest == 0 ? Step::EndOfFile : Step::CutOff;
        const auto length = static_cast<std::int32_t>(integerAt(m_offset));
        if (length <= 0) return Step::Terminator;
        record.length = static_cast<std::size_t>(length);
        if (rest < kRecordHeaderSize || record.length > rest - kRecordHeaderSize) {
            return Step::CutOff;
        }
        record.id = integerAt(m_offset + kIntegerSize);
        m_offset += kRecordHeaderSize + record.length;
        return Step::Record;
    }

private:
    std::uint32_t integerAt(std::size_t offset) const {
        return load(m_file.data() + offset) ^ m_mask;
    }

    std::string_view m_file;
    std::uint32_t m_mask;
    std::size_t m_offset = kHeaderSize;
};

}  // namespace mlformat
