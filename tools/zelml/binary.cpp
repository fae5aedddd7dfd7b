#include "binary.h"

#include <bitset>
#include <optional>

#include "text/mlformat.h"

namespace {

using mlformat::Header;
using mlformat::Record;
using mlformat::Records;

void store(std::string& bytes, std::uint32_t number) {
    for (std::size_t i = 0; i < mlformat::kIntegerSize; ++i) {
        bytes += static_cast<char>((number >> (8 * i)) & 0xFF);
    }
}

std::optional<FileFault> headerFault(std::string_view bytes) {
    switch (mlformat::checkHeader(bytes)) {
        case Header::Good:
            return std::nullopt;
        case Header::CutOff:
            return FileFault{bytes.size(), "the file ends within its header"};
        case Header::WrongMagic:
            return FileFault{0, "wrong magic number"};
        case Header::WrongVersion:
            return FileFault{mlformat::kIntegerSize, "wrong version"};
    }
    return std::nullopt;
}

// How the records ended, when not with a terminator at the very end of the file.
std::optional<FileFault> endFault(Records::Step end, std::size_t offset, std::string_view bytes) {
    if (end == Records::Step::EndOfFile) return FileFault{offset, "the terminator is missing"};
    if (end == Records::Step::CutOff) {
        return FileFault{offset, "the file ends within the record that begins here"};
    }
    const std::size_t behind = offset + mlformat::kIntegerSize;
    if (mlformat::load(bytes.data() + offset) != 0) {
        return FileFault{offset, "the terminator is not 0"};
    }
    if (behind != bytes.size()) return FileFault{behind, "bytes behind the terminator"};
    return std::nullopt;
}

// What a source could not say of a record.
std::optional<FileFault> idFault(const Record& record, bool isKnown) {
    const auto id = static_cast<std::uint16_t>(record.id);
    const std::string name = "id " + std::to_string(record.id);
    if (record.id != id) {
        return FileFault{record.offset, name + " is read as " + std::to_string(id)};
    }
    if (id == 0) return FileFault{record.offset, name + " cannot be used"};
    if (isKnown) return FileFault{record.offset, name + " has a text already; this one is ignored"};
    return std::nullopt;
}

std::string plainText(std::string_view bytes, const Record& record) {
    std::string text(bytes.substr(record.offset + mlformat::kRecordHeaderSize, record.length));
    mlformat::toggleKey(text.data(), text.size());
    return text;
}

}  // namespace

std::string makeFile(const std::vector<SourceText>& texts) {
    std::string bytes;
    store(bytes, mlformat::kMagic);
    store(bytes, mlformat::kVersion);
    for (const auto& [id, text] : texts) {
        store(bytes, static_cast<std::uint32_t>(text.size()));
        store(bytes, id);
        const std::size_t start = bytes.size();
        bytes += text;
        mlformat::toggleKey(bytes.data() + start, text.size());
    }
    store(bytes, 0);
    return bytes;
}

FileContent readFile(std::string_view bytes) {
    FileContent content;
    if (const auto fault = headerFault(bytes)) {
        content.faults.push_back(*fault);
        return content;
    }
    std::bitset<0x10000> known;
    Records records(bytes);
    Record record;
    Records::Step step;
    while ((step = records.next(record)) == Records::Step::Record) {
        const auto id = static_cast<std::uint16_t>(record.id);
        if (const auto fault = idFault(record, known[id])) content.faults.push_back(*fault);
        if (!known[id]) content.texts.push_back({id, plainText(bytes, record)});
        known.set(id);
    }
    if (const auto fault = endFault(step, record.offset, bytes)) content.faults.push_back(*fault);
    return content;
}
