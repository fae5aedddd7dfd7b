// All languages with their texts, and the reader of their files.

#pragma once

#include <atomic>
#include <cstdint>
#include <memory>
#include <mutex>
#include <string_view>
#include <vector>

#include "sv/string.h"
#include "text/mltable.h"
#include "zbasic/zobject.h"

class MlTextIndex;

struct MlLanguage {
    std::uint16_t id;
    std::unique_ptr<MlStringTable> table;
};

// The answers behind the functions of zbasic/zmlstring.h, which say what they are.
// Threads: any number may look up; `table` and `clear` need the container alone.
class ZelLanguageContainer {
public:
    static ZelLanguageContainer& Instance();

    ZelLanguageContainer();
    ZelLanguageContainer(const ZelLanguageContainer&) = delete;
    ZelLanguageContainer& operator=(const ZelLanguageContainer&) = delete;
    virtual ~ZelLanguageContainer();

    // The table of a language, to be filled; an empty one is made for a new language.
    MlStringTable& table(std::uint16_t language);
    void clear();

    SV::String text(std::uint16_t id, std::uint16_t language) const {
        const MlStringTable* const table = m_tables[language];
        return table ? (*table)[id] : SV::String();
    }
    bool equals(std::string_view text, std::uint16_t id, int* length) const;
    bool startsWith(std::string_view text, std::uint16_t id, int* length) const;
    int searchForAny(std::string_view text, std::uint16_t id, int* length) const;
    std::uint16_t findId(std::string_view text) const;

private:
    const MlTextIndex& textIndex() const;

    std::vector<MlLanguage> m_languages;  // ascending
    PagedArray<const MlStringTable*> m_tables;

    // From texts to ids; made by the first who asks, for loading is quicker without.
    mutable std::mutex m_indexMutex;
    mutable std::unique_ptr<const MlTextIndex> m_index;
    mutable std::atomic<const MlTextIndex*> m_publishedIndex = nullptr;
};

// Reads one file into the table of its language.
class ZelMLResFileReader : public ZelObject {
public:
    ZelMLResFileReader(MlStringTable& table, const SV::String& path);
    ~ZelMLResFileReader() override;

    // False when the file is missing or is none of its kind; the table is as it was.
    // `buffer` is room for the file: handed on from reader to reader it saves the
    // system from providing, and clearing, new memory for each.
    bool read(std::vector<char>& buffer);

private:
    MlStringTable* m_table;
    SV::String m_path;
};
