#include "sv/dir.h"

#include "wildcard.h"

namespace SV {

namespace {

std::size_t nameStart(std::string_view path) { return path.find_last_of("\\/:") + 1; }

}  // namespace

bool matchesWildcard(std::string_view pattern, std::string_view name) {
    std::size_t p = 0, n = 0;
    std::size_t star = pattern.npos, starName = 0;  // the last star, and where its text ends
    while (n < name.size()) {
        if (p < pattern.size() && pattern[p] == '*') {
            star = p++;
            starName = n;
        } else if (p < pattern.size() && (pattern[p] == '?' || pattern[p] == name[n])) {
            ++p;
            ++n;
        } else if (star != pattern.npos) {
            p = star + 1;
            n = ++starName;
        } else {
            return false;
        }
    }
    return pattern.find_first_not_of('*', p) == pattern.npos;
}

String DirEntry::GetPath() const { return m_path.substr(0, nameStart(m_path)); }

String DirEntry::GetName() const { return m_path.substr(nameStart(m_path)); }

String DirEntry::GetBase() const {
    const String name = GetName();
    return name.substr(0, name.rfind('.'));
}

String DirEntry::GetExtension() const {
    const String name = GetName();
    const std::size_t dot = name.rfind('.');
    return dot == String::npos ? String() : name.substr(dot);
}

}  // namespace SV
