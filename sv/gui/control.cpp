#include "sv/control.h"

#include <algorithm>
#include <charconv>
#include <string>
#include <string_view>

#include <windows.h>
#include <commctrl.h>

namespace SV {

namespace {

// Of a number field, more than a number within bounds can have. No text that takes memory: the
// system calls when the user leaves the field.
constexpr int kMostDigits = 40;

Area areaOf(HWND window) {
    RECT area = {};
    ::GetWindowRect(window, &area);
    ::MapWindowPoints(nullptr, ::GetParent(window), reinterpret_cast<POINT*>(&area), 2);
    return {static_cast<int>(area.left), static_cast<int>(area.top),
            static_cast<int>(area.right - area.left), static_cast<int>(area.bottom - area.top)};
}

bool isComboBox(HWND window) {
    char name[32] = "";
    ::GetClassNameA(window, name, sizeof name);
    return std::string_view(name) == "ComboBox";
}

}  // namespace

Control::Control(Window& parent, int id) { attach(::GetDlgItem(parent.GetHandle(), id)); }

Control::Control(Window* parent, const ResId& id) {
    createFromResource(parent, id);
    ::ShowWindow(m_handle, SW_SHOWNA);
}

bool Control::IsEnabled() const { return ::IsWindowEnabled(m_handle); }

void Control::SetEnabled(bool isEnabled) { ::EnableWindow(m_handle, isEnabled); }

Area Control::GetArea() const { return areaOf(m_handle); }

void Control::SetArea(const Area& area) {
    ::MoveWindow(m_handle, area.x, area.y, area.width, area.height, TRUE);
}

void Control::Resize() {}

std::intptr_t Control::handle(unsigned message, std::uintptr_t wParam, std::intptr_t lParam) {
    if (message != WM_SIZE) return SystemWindow::handle(message, wParam, lParam);
    const std::intptr_t result = handleDefault(message, wParam, lParam);
    Resize();
    return result;
}

ListBox::ListBox(Window& parent, int id) : Control(parent, id), m_isCombo(isComboBox(m_handle)) {}

std::intptr_t ListBox::send(unsigned forList, unsigned forCombo, std::uintptr_t wParam,
                            std::intptr_t lParam) const {
    return ::SendMessageA(m_handle, m_isCombo ? forCombo : forList, wParam, lParam);
}

void ListBox::Clear() { send(LB_RESETCONTENT, CB_RESETCONTENT); }

void ListBox::Append(const String& text) {
    send(LB_ADDSTRING, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(text.c_str()));
}

int ListBox::GetCount() const { return static_cast<int>(send(LB_GETCOUNT, CB_GETCOUNT)); }

String ListBox::GetEntry(int pos) const {
    const auto place = static_cast<WPARAM>(pos);
    const std::intptr_t length = send(LB_GETTEXTLEN, CB_GETLBTEXTLEN, place);
    if (pos < 0 || length <= 0) return {};
    std::string text(static_cast<std::size_t>(length) + 1, '\0');
    send(LB_GETTEXT, CB_GETLBTEXT, place, reinterpret_cast<LPARAM>(text.data()));
    return text.c_str();
}

void ListBox::SelectPos(int pos) { send(LB_SETCURSEL, CB_SETCURSEL, static_cast<WPARAM>(pos)); }

int ListBox::GetSelectedPos() const { return static_cast<int>(send(LB_GETCURSEL, CB_GETCURSEL)); }

bool ListBox::IsSelection(int code) const {
    return code == LBN_SELCHANGE;  // which is the number of CBN_SELCHANGE, too
}

void ListBox::SetArea(const Area& area) {
    RECT open = {};
    if (!m_isCombo || !send(0, CB_GETDROPPEDCONTROLRECT, 0, reinterpret_cast<LPARAM>(&open))) {
        return Control::SetArea(area);
    }
    // The system takes the height of the open list together with that of the box.
    Control::SetArea({area.x, area.y, area.width, static_cast<int>(open.bottom - open.top)});
}

MetricField::MetricField(Window& parent, int editId, int spinId)
    : Control(parent, editId), m_spin(parent, spinId) {
    setRange();
}

void MetricField::setRange() {
    ::SendMessageA(m_spin.GetHandle(), UDM_SETRANGE32, static_cast<WPARAM>(m_min), m_max);
    SetValue(GetValue());
}

void MetricField::SetMin(int least) {
    m_min = least;
    setRange();
}

void MetricField::SetMax(int most) {
    m_max = most;
    setRange();
}

void MetricField::SetValue(int value) {
    const int within = std::max(m_min, std::min(value, m_max));
    // The text as well: the buttons leave it alone when they have the value already.
    ::SendMessageA(m_spin.GetHandle(), UDM_SETPOS32, 0, within);
    char text[kMostDigits] = "", shown[kMostDigits] = "";
    std::to_chars(text, text + sizeof text - 1, within);
    ::GetWindowTextA(m_handle, shown, sizeof shown);
    if (m_handle && std::string_view(text) != shown) ::SetWindowTextA(m_handle, text);
}

int MetricField::GetValue() const {
    if (!m_handle) return m_min;
    char text[kMostDigits] = "";
    const int length = ::GetWindowTextA(m_handle, text, sizeof text);
    int value = m_min;
    // Too long a number leaves the value as it is, and that is not what was typed.
    const auto [end, error] = std::from_chars(text, text + length, value);
    if (error == std::errc::result_out_of_range) value = text[0] == '-' ? m_min : m_max;
    return std::max(m_min, std::min(value, m_max));
}

void MetricField::SetEnabled(bool isEnabled) {
    Control::SetEnabled(isEnabled);
    m_spin.SetEnabled(isEnabled);
}

Area MetricField::GetArea() const {
    const Area edit = Control::GetArea(), spin = m_spin.GetArea();
    return {edit.x, edit.y, spin.x + spin.width - edit.x, edit.height};
}

void MetricField::SetArea(const Area& area) {
    const int buttons = m_spin.GetArea().width;
    Control::SetArea({area.x, area.y, area.width - buttons, area.height});
    m_spin.SetArea({area.x + area.width - buttons, area.y, buttons, area.height});
}

std::intptr_t MetricField::handle(unsigned message, std::uintptr_t wParam, std::intptr_t lParam) {
    if (message == WM_KILLFOCUS) SetValue(GetValue());  // what was typed may be out of bounds
    return Control::handle(message, wParam, lParam);
}

}  // namespace SV
