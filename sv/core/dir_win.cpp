#include "sv/dir.h"

#include <algorithm>
#include <string_view>
#include <utility>

#include "wildcard.h"

#include <windows.h>

namespace SV {

namespace {

DWORD errorOf(BOOL isDone) { return isDone ? ERROR_SUCCESS : ::GetLastError(); }

}  // namespace

bool DirEntry::Exists() const {
    return ::GetFileAttributesA(m_path.c_str()) != INVALID_FILE_ATTRIBUTES;
}

bool DirEntry::IsDirectory() const {
    const DWORD attributes = ::GetFileAttributesA(m_path.c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY);
}

std::uint32_t DirEntry::MoveTo(const DirEntry& target) const {
    return errorOf(::MoveFileA(m_path.c_str(), target.m_path.c_str()));
}

std::uint32_t DirEntry::Kill() const {
    if (IsDirectory()) return errorOf(::RemoveDirectoryA(m_path.c_str()));
    return errorOf(::DeleteFileA(m_path.c_str()));
}

Dir::Dir(const DirEntry& pattern) {
    using Found = std::pair<String, DirEntry>;  // the name without case
    const String names = pattern.GetName().Lower();
    std::vector<Found> found;
    WIN32_FIND_DATAA data;
    const HANDLE search = ::FindFirstFileA(pattern.GetFull().c_str(), &data);
    if (search == INVALID_HANDLE_VALUE) return;
    do {
        const std::string_view name(data.cFileName);
        const String lower = String(name).Lower();
        // The system holds the pattern against the short names of files as well.
        if (name == "." || name == ".." || !matchesWildcard(names, lower)) continue;
        found.emplace_back(lower, DirEntry(pattern.GetPath() + String(name)));
    } while (::FindNextFileA(search, &data));
    ::FindClose(search);
    std::ranges::sort(found, {}, &Found::first);
    for (Found& entry : found) m_entries.push_back(std::move(entry.second));
}

}  // namespace SV
