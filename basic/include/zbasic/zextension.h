// File-name extensions.

#pragma once

#include <set>
#include <string_view>

#include "sv/string.h"
#include "zbasic/zexport.h"

// The extensions that one kind of file may have, the first of them being what a name without one
// gets. Extensions are given without their dot and compared without regard to the case of ASCII
// letters. A plain value; look-ups take logarithmic time and no memory.
//
//     ZelExtensionManager models("mdl");
//     models.addExtension("xml");
//     models.setExtension(path);  // "model": "model.mdl"; "model.XML": as it is;
//                                 // "model.txt": "model.txt.mdl"; "dir\": as it is
//     models.getPath("a.b.XML");  // "a.b"
//
// Relied on by callers: the dot that counts is the last of the whole path, also when that is one
// in a folder's name ("dir.d\model" has the extension "d\model").
class ZBASIC_API ZelExtensionManager {
public:
    // With `ext` as the first one.
    explicit ZelExtensionManager(const SV::String& ext);

    // As values; what was moved from has no extension.
    ZelExtensionManager(const ZelExtensionManager&);
    ZelExtensionManager(ZelExtensionManager&&) noexcept;
    ZelExtensionManager& operator=(const ZelExtensionManager&);
    ZelExtensionManager& operator=(ZelExtensionManager&&) noexcept;
    ~ZelExtensionManager();

    void addExtension(const SV::String& ext);  // nothing happens when it is there already
    SV::String getExtension() const;           // the first one; empty when there is none

    // Appends "." and the first extension, unless `path` has one of ours or ends in a backslash.
    void setExtension(SV::String& path) const;
    // `path` without its last dot and what follows, if that is one of ours.
    SV::String getPath(SV::String path) const;

    // What stands before and behind the last dot; without a dot `ext` becomes empty. The results
    // may be the same object as `path`.
    static void parsePath(const SV::String& path, SV::String& base, SV::String& ext);

private:
    struct Less {
        using is_transparent = void;
        bool operator()(std::string_view a, std::string_view b) const;
    };

    bool hasOneOfOurs(std::string_view path) const;

    SV::String m_first;
    std::set<SV::String, Less> m_extensions;
};
