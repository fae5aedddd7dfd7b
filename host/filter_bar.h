// The filter field above a picture.

#pragma once

#include <memory>

#include "sv/string.h"
#include "sv/window.h"

struct HFONT__;

namespace zelhost {

// A label, a field for a wildcard pattern, and what came of it. The system windows belong to
// their parent and go with it.
class FilterBar {
public:
    // The field tells its parent of changes by WM_COMMAND with this number.
    static constexpr int kFieldId = 1;

    explicit FilterBar(HWND parent);

    int height() const { return m_height; }
    SV::String pattern() const;
    void focus();
    void showCount(std::size_t shown, std::size_t all);
    void showUnusable();
    // Sets the label's text in the language of the user interface and places everything.
    void layOut(int width);

private:
    struct FontDeleter {
        void operator()(HFONT__* font) const;
    };

    HWND add(const char* windowClass, unsigned long style, int id);

    HWND m_parent;
    std::unique_ptr<HFONT__, FontDeleter> m_font;
    HWND m_label;
    HWND m_field;
    HWND m_outcome;
    int m_height;
};

}  // namespace zelhost
