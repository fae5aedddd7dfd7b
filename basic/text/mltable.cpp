#include "text/mltable.h"

#include <bitset>
#include <string_view>

#include "text/mlformat.h"

namespace {

using Pages = std::bitset<65536 / PagedArray<SV::String>::kPageSize>;

// How many pages the ids of a file are on.
std::size_t pageCount(std::string_view file) {
    Pages pages;
    mlformat::Records records(file);
    mlformat::Record record;
    while (records.next(record) == mlformat::Records::Step::Record) {
        pages.set(static_cast<std::uint16_t>(record.id) / PagedArray<SV::String>::kPageSize);
    }
    return pages.count();
}

}  // namespace

bool MlStringTable::add(char* bytes, std::size_t size) {
    const std::string_view file(bytes, size);
    if (mlformat::checkHeader(file) != mlformat::Header::Good) return false;
    if (m_count == 0) m_texts.reserve(pageCount(file) * PagedArray<SV::String>::kPageSize);

    mlformat::toggleKey(bytes, size);
    mlformat::Records records(file, mlformat::kKeyWord);
    mlformat::Record record;
    while (records.next(record) == mlformat::Records::Step::Record) {
        SV::String& text = m_texts.writable(static_cast<std::uint16_t>(record.id));
        if (!text.empty()) continue;
        text.assign(bytes + record.offset + mlformat::kRecordHeaderSize, record.length);
        ++m_count;
    }
    return true;
}
