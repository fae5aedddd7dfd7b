#include "zbasic/zextension.h"

#include <algorithm>
#include <utility>

#include "sv/ascii.h"

bool ZelExtensionManager::Less::operator()(std::string_view a, std::string_view b) const {
    // Not by the user's locale: which files are ours must not depend on it.
    return std::ranges::lexicographical_compare(a, b, {}, SV::ToAsciiLower, SV::ToAsciiLower);
}

ZelExtensionManager::ZelExtensionManager(const SV::String& ext) { addExtension(ext); }
ZelExtensionManager::ZelExtensionManager(const ZelExtensionManager&) = default;
ZelExtensionManager::ZelExtensionManager(ZelExtensionManager&& other) noexcept
    : m_first(std::move(other.m_first)), m_extensions(std::move(other.m_extensions)) {
    other.m_extensions.clear();
}
ZelExtensionManager& ZelExtensionManager::operator=(const ZelExtensionManager&) = default;
ZelExtensionManager& ZelExtensionManager::operator=(ZelExtensionManager&& other) noexcept {
    std::swap(m_first, other.m_first);
    m_extensions.swap(other.m_extensions);
    if (this == &other) return *this;
    other.m_first.clear();
    other.m_extensions.clear();
    return *this;
}
ZelExtensionManager::~ZelExtensionManager() = default;

void ZelExtensionManager::addExtension(const SV::String& ext) {
    if (m_extensions.empty()) m_first = ext;
    m_extensions.insert(ext);  // which of two that differ in case it is does not matter
}

SV::String ZelExtensionManager::getExtension() const { return m_first; }

bool ZelExtensionManager::hasOneOfOurs(std::string_view path) const {
    // Relied on by callers: the last dot of the whole path, not of its name.
    const std::size_t dot = path.rfind('.');
    return dot != path.npos && m_extensions.contains(path.substr(dot + 1));
}

void ZelExtensionManager::setExtension(SV::String& path) const {
    if (m_extensions.empty() || std::string_view(path).ends_with('\\')) return;
    if (!hasOneOfOurs(path)) path += "." + m_first;
}

SV::String ZelExtensionManager::getPath(SV::String path) const {
    if (hasOneOfOurs(path)) path.erase(path.rfind('.'));
    return path;
}

void ZelExtensionManager::parsePath(const SV::String& path, SV::String& base, SV::String& ext) {
    const std::size_t dot = path.rfind('.');
    SV::String front = path.substr(0, dot);
    SV::String back = dot == SV::String::npos ? SV::String() : path.substr(dot + 1);
    base = std::move(front);  // only now: `path` may be the same object
    ext = std::move(back);
}
