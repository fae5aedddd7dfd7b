// String resources by number.

#pragma once

#include <cstdint>

#include "sv/export.h"
#include "sv/string.h"

namespace SV {

// Names one resource.
struct ResId {
    static constexpr std::uint32_t kString = 0x0200;  // types: a text
    static constexpr std::uint32_t kDialog = 0x0300;  // a dialog box or a group of controls

    // A text, unless a type is given.
    explicit constexpr ResId(std::uint32_t resNumber, std::uint32_t resType = kString)
        : number(resNumber), type(resType) {}

    std::uint32_t number;  // in the resource file
    std::uint32_t type;    // one of the two above
};

// One resource file (a DLL, loaded as data: none of its code ever runs). A
// relative name is taken from the program's directory, never from the current
// one or the search path.
//
// A file that cannot be loaded raises `Application::Exception(1024, detail)` on
// the current application object, where `detail` is the address of the file
// name as a text; that address is valid until the next such exception.
class SV_API ResMgr {
public:
    // Loads the file; whether that succeeded tells `IsLoaded`.
    explicit ResMgr(const String& fileName);
    ResMgr(const ResMgr&) = delete;
    ResMgr& operator=(const ResMgr&) = delete;
    ~ResMgr();

    bool IsLoaded() const { return m_module != nullptr; }     // if not, it has no resources
    const String& GetFileName() const { return m_fileName; }  // as given

    // The text in the process code page; false when the file has none (or an
    // empty one: the format does not tell the two apart).
    bool FindString(std::uint32_t number, String& text) const;
    // A dialog in the system's form, valid as long as this object; null when there is none.
    const void* FindDialog(std::uint32_t number) const;

private:
    String m_fileName;
    void* m_module = nullptr;
};

// The resource files of the process.
class SV_API Resource {
public:
    // The manager that texts are taken from; not owned, null when there is none.
    static ResMgr* GetResManager();
    static void SetResManager(ResMgr* manager);

    // A number that changes whenever texts may from then on come from elsewhere: for
    // callers that keep them.
    static std::uint64_t GetGeneration();

    // The text from the current manager, else from the first of the other living
    // ones (in the order of loading) that has it; raises no exception.
    static bool FindString(std::uint32_t number, String& text);

    // The dialog likewise; null when nobody has it.
    static const void* FindDialog(std::uint32_t number);

    // The text of `id` from the current manager. When that lacks it,
    // `Application::Exception(256, number)` is raised; when that answers true, the
    // lookup is repeated with the manager then installed. Empty otherwise. The
    // manager that was current before is current again afterwards.
    static String GetString(const ResId& id);
};

}  // namespace SV
