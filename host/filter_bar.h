// The filter field above a picture.

#pragma once

#include <cstddef>
#include <memory>

#include "sv/control.h"
#include "sv/string.h"

struct HFONT__;

namespace zelhost {

// A text field from which the keys of the whole window work as well.
class FilterField : public SV::Control {
public:
    using SV::Control::Control;

private:
    std::intptr_t handle(unsigned message, std::uintptr_t wParam, std::intptr_t lParam) override;
};

// A label, a field for a wildcard pattern, and what came of it. The system windows belong to
// their parent and go with it.
class FilterBar {
public:
    // The field tells its parent of changes by WM_COMMAND with this number.
    static constexpr int kFieldId = 1;

    FilterBar(SV::Window& parent, std::size_t nodeCount);

    int height() const { return m_height; }
    int margin() const { return m_margin; }
    HFONT__* font() const { return m_font.get(); }  // of the system's boxes and menus; stays ours
    SV::String pattern() const;
    void focus();
    void clear();
    void showCount(std::size_t shown);
    void showUnusable();
    void showBusy();
    // Sets the label's text in the language of the user interface and places everything.
    void layOut(int width);

private:
    struct FontDeleter {
        void operator()(HFONT__* font) const;
    };

    int addField();
    SV::String countText(std::size_t shown) const;
    HWND add(const char* windowClass, unsigned long style, int id);

    std::size_t m_nodeCount;
    HWND m_parent;
    std::unique_ptr<HFONT__, FontDeleter> m_font;
    HWND m_label;
    FilterField m_field;
    HWND m_outcome;
    int m_margin;
    int m_height;
};

}  // namespace zelhost
