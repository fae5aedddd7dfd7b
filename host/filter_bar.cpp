#include "filter_bar.h"

#include <algorithm>
#include <string>

#include "hostkeys.h"
#include "texts.h"
#include "zbasic/zgui.h"

#include <windows.h>

namespace zelhost {

namespace {

constexpr int kFieldLetters = 20;
// In pixels of a screen with 96 to the inch.
constexpr int kMargin = 4;
constexpr int kFieldFrame = 6;
constexpr int kMinFieldWidth = 40;
constexpr int kMaxPatternSize = 255;

// What the system writes in boxes and menus; null when it does not say, which is its oldest font.
HFONT messageFont() {
    NONCLIENTMETRICSA metrics = {};
    metrics.cbSize = sizeof metrics;
    if (!::SystemParametersInfoA(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0)) {
        return nullptr;
    }
    return ::CreateFontIndirectA(&metrics.lfMessageFont);
}

int scaled(int pixels) { return static_cast<int>(pixels * Zel_GetSystemDPIScaleY()); }

// For measuring text in a font that somebody else owns.
class Measure {
public:
    Measure(HWND window, HFONT font)
        : m_window(window), m_device(::GetDC(window)), m_previous(::SelectObject(m_device, font)) {}
    Measure(const Measure&) = delete;
    Measure& operator=(const Measure&) = delete;
    ~Measure() {
        ::SelectObject(m_device, m_previous);
        ::ReleaseDC(m_window, m_device);
    }

    int lineHeight() const {
        TEXTMETRICA metrics = {};
        ::GetTextMetricsA(m_device, &metrics);
        return static_cast<int>(metrics.tmHeight);
    }
    int widthOf(const SV::String& text) const {
        SIZE size = {};
        ::GetTextExtentPoint32A(m_device, text.data(), static_cast<int>(text.size()), &size);
        return static_cast<int>(size.cx);
    }

private:
    HWND m_window;
    HDC m_device;
    HGDIOBJ m_previous;
};

}  // namespace

void FilterBar::FontDeleter::operator()(HFONT__* font) const { ::DeleteObject(font); }

std::intptr_t FilterField::handle(unsigned message, std::uintptr_t wParam, std::intptr_t lParam) {
    if (message == WM_KEYDOWN && carryOutKey(*this, wParam)) return 0;
    return SV::Control::handle(message, wParam, lParam);
}

FilterBar::FilterBar(SV::Window& parent, std::size_t nodeCount)
    : m_nodeCount(nodeCount),
      m_parent(parent.GetHandle()),
      m_font(messageFont()),
      m_label(add("STATIC", SS_LEFTNOWORDWRAP, 0)),
      m_field(parent, addField()),
      m_outcome(add("STATIC", SS_LEFTNOWORDWRAP | SS_ENDELLIPSIS, 0)),
      m_margin(scaled(kMargin)) {
    ::SendMessageA(m_field.GetHandle(), EM_SETLIMITTEXT, kMaxPatternSize, 0);
    m_height = Measure(m_parent, m_font.get()).lineHeight() + scaled(kFieldFrame) + 2 * m_margin;
}

HWND FilterBar::add(const char* windowClass, unsigned long style, int id) {
    const HWND window =
        ::CreateWindowExA(0, windowClass, "", WS_CHILD | WS_VISIBLE | style, 0, 0, 0, 0, m_parent,
                          reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)), nullptr, nullptr);
    ::SendMessageA(window, WM_SETFONT, reinterpret_cast<WPARAM>(m_font.get()), FALSE);
    return window;
}

int FilterBar::addField() {
    add("EDIT", WS_BORDER | WS_TABSTOP | ES_AUTOHSCROLL, kFieldId);
    return kFieldId;
}

SV::String FilterBar::pattern() const { return m_field.GetText(); }

void FilterBar::focus() { m_field.GrabFocus(); }

void FilterBar::clear() { m_field.SetText(""); }

SV::String FilterBar::countText(std::size_t shown) const {
    return filled(filled(Text::kFilterCount, std::to_string(shown)), std::to_string(m_nodeCount));
}

void FilterBar::showCount(std::size_t shown) {
    ::SetWindowTextA(m_outcome, countText(shown).c_str());
}

void FilterBar::showUnusable() {
    ::SetWindowTextA(m_outcome, textOf(Text::kFilterUnusable).c_str());
}

void FilterBar::showBusy() { ::SetWindowTextA(m_outcome, "..."); }

void FilterBar::layOut(int width) {
    const SV::String label = textOf(Text::kFilterLabel);
    ::SetWindowTextA(m_label, label.c_str());
    const Measure measure(m_parent, m_font.get());
    // In narrow windows what came of it counts more, and the label least.
    const int outcomeWidth = measure.widthOf(countText(m_nodeCount));
    const int wholeLabel = measure.widthOf(label) + m_margin;
    const int needed = scaled(kMinFieldWidth) + outcomeWidth + 4 * m_margin;
    const int labelWidth = wholeLabel + needed <= width ? wholeLabel : 0;
    const int fieldStart = m_margin + labelWidth;
    const int wanted = measure.widthOf(SV::String(std::size_t{kFieldLetters}, 'x'));
    const int room = width - fieldStart - 2 * m_margin - outcomeWidth - m_margin;
    const int fieldWidth = std::clamp(room, scaled(kMinFieldWidth), wanted);
    const int outcomeStart = fieldStart + fieldWidth + 2 * m_margin;
    const int textTop = m_margin + scaled(kFieldFrame) / 2;
    const int textHeight = m_height - 2 * textTop;
    ::MoveWindow(m_label, m_margin, textTop, labelWidth, textHeight, TRUE);
    m_field.SetArea({fieldStart, m_margin, fieldWidth, m_height - 2 * m_margin});
    ::MoveWindow(m_outcome, outcomeStart, textTop, std::max(0, width - outcomeStart), textHeight,
                 TRUE);
}

}  // namespace zelhost
