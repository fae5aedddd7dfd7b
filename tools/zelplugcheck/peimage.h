// A DLL as bytes: what it exports, read without loading it.

#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace zelplugcheck {

// A file in the format of "Microsoft Portable Executable and Common Object File Format". Nothing
// that it says of itself is believed: places outside the file count as not there.
class PeImage {
public:
    explicit PeImage(std::string bytes);

    bool isPe() const { return m_isPe; }
    bool isDll() const { return m_isDll; }
    bool isX64() const { return m_isX64; }  // only such an image has exports here
    std::uint16_t machine() const { return m_machine; }

    bool exports(std::string_view name) const { return m_exports.contains(name); }

    // What the exported function returns, if it does nothing but return a constant: such code is
    // recognised. Nothing for any other one, and for a function that lies in another DLL.
    std::optional<std::int32_t> constantOf(std::string_view name) const;

private:
    struct Section {
        std::uint32_t address;  // from the start of the loaded image, as are those below
        std::uint32_t size;
        std::uint32_t offset;  // in the file
    };

    void readHeaders();
    void readSections(std::uint64_t table, unsigned count);
    void readExports(std::uint32_t address, std::uint32_t size);
    std::string_view at(std::uint32_t address) const;  // all bytes of the section from there on
    std::string_view nameAt(std::uint32_t address) const;

    std::string m_bytes;
    bool m_isPe = false, m_isDll = false, m_isX64 = false;
    std::uint16_t m_machine = 0;
    std::vector<Section> m_sections;
    std::map<std::string, std::uint32_t, std::less<>> m_exports;  // addresses; 0: in another DLL
};

}  // namespace zelplugcheck
