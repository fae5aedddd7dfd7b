// Files and folders by path.

#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "sv/export.h"
#include "sv/string.h"

namespace SV {

// The path of a file or folder, which need not be there. Separators are "\" and "/"; a path that
// is not absolute counts from the current directory.
class SV_API DirEntry {
public:
    // Only keeps the path; each question asks the system anew.
    explicit DirEntry(const String& path) : m_path(path) {}

    const String& GetFull() const { return m_path; }  // as given
    String GetPath() const;       // all before the name, with its separator or drive colon
    String GetName() const;       // behind the last separator
    String GetBase() const;       // the name before its last dot; all of it when there is none
    String GetExtension() const;  // the last dot and what follows; empty when there is none

    bool Exists() const;       // as whatever it is
    bool IsDirectory() const;  // false as well when there is nothing

    // The system's error code, 0 for success. `MoveTo` replaces nothing: a target that exists
    // is an error. `Kill` removes a file, or a folder with nothing in it.
    std::uint32_t MoveTo(const DirEntry& target) const;
    std::uint32_t Kill() const;

private:
    String m_path;
};

// What lies in a folder, taken when the object is made: entries of every kind but "." and "..",
// in the order of their names without regard to case.
class SV_API Dir {
public:
    // The name of `pattern` may have "*" (any text) and "?" (any character); it is held against
    // long names only, without regard to case, so that "*.log" does not match "a.log1".
    explicit Dir(const DirEntry& pattern);

    // The entries by index from 0 (which is not checked), and as a range. Their paths are the
    // folder as the pattern has it, and the name.
    std::size_t Count() const { return m_entries.size(); }
    const DirEntry& operator[](std::size_t index) const { return m_entries[index]; }
    auto begin() const { return m_entries.begin(); }
    auto end() const { return m_entries.end(); }

private:
    std::vector<DirEntry> m_entries;
};

}  // namespace SV
