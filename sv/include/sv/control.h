// Controls: what the system draws, and groups of them that act as one.

#pragma once

#include <cstdint>

#include "sv/export.h"
#include "sv/resource.h"
#include "sv/window.h"

namespace SV {

// The place of a control in its parent window.
struct Area {
    // In pixels; the place is that of the left upper corner, counted from the parent's.
    int x;
    int y;
    int width;
    int height;

    friend bool operator==(const Area&, const Area&) = default;
};

// A window of one of the system's own classes. Main thread only. Without a window (it could not
// be made, or its parent is gone) nothing happens.
class SV_API SystemWindow : public Window {
public:
    ~SystemWindow() override;

protected:
    SystemWindow() = default;

    // Takes over a window that exists: its messages come here first, and the destructor destroys
    // it. Null: the object stays without one.
    void attach(HWND handle);

    // Makes the window, hidden, and all in it from a dialog resource. One that no resource file
    // has raises `Application::Exception(256, number)`, one that the system cannot make 512.
    void createFromResource(const Window* parent, const ResId& id);

    std::intptr_t handle(unsigned message, std::uintptr_t wParam, std::intptr_t lParam) override;
    std::intptr_t handleDefault(unsigned message, std::uintptr_t wParam,
                                std::intptr_t lParam) override;

    // The control `id` in this window tells something, by the system's code; 0 of a button: it was
    // pressed. Here nothing happens.
    virtual void Notify(int id, int code);

private:
    friend struct SystemWindowProc;
    std::intptr_t m_original = 0;  // the class's own procedure
};

// A control in a dialog or in a group, or such a group.
class SV_API Control : public SystemWindow {
public:
    // The control `id` of a window, which must not have an object yet.
    Control(Window& parent, int id);
    // A group from a dialog resource with the style of a child window, shown at once at the
    // place that the resource says.
    Control(Window* parent, const ResId& id);

    // Whether the user can use it.
    bool IsEnabled() const;
    virtual void SetEnabled(bool isEnabled);
    // Where it lies. Setting it paints the control anew and, for another size, calls `Resize`.
    virtual Area GetArea() const;
    virtual void SetArea(const Area& area);
    virtual void Resize();  // the size has changed: lays out what is in it

protected:
    std::intptr_t handle(unsigned message, std::uintptr_t wParam, std::intptr_t lParam) override;
};

// Lines to choose one of, in a list or behind a button (the system's list and combo boxes).
class SV_API ListBox : public Control {
public:
    enum : int { kNone = -1 };  // no line

    // The list or combo box `id` of a window.
    ListBox(Window& parent, int id);

    void Clear();                     // drops all lines
    void Append(const String& text);  // in a sorted list to its place; up to the first NUL
    int GetCount() const;             // of lines
    String GetEntry(int pos) const;   // empty when there is none
    // Positions count from 0. One that there is not selects nothing.
    void SelectPos(int pos);
    int GetSelectedPos() const;        // or `kNone`
    bool IsSelection(int code) const;  // does this notification say that the user has chosen?

    void SetArea(const Area& area) override;  // closed; the open list keeps its height

private:
    std::intptr_t send(unsigned forList, unsigned forCombo, std::uintptr_t wParam = 0,
                       std::intptr_t lParam = 0) const;

    bool m_isCombo = false;
};

// A whole number with buttons that count it up and down, as the arrow keys do: an edit control
// and, next in the resource, the spin buttons that belong to it.
class SV_API MetricField : public Control {
public:
    // The two controls of a window; the bounds are 0 and 100 at first.
    MetricField(Window& parent, int editId, int spinId);

    // The bounds, which count at once.
    void SetMin(int least);  // a smaller value becomes `least`
    void SetMax(int most);   // a larger value becomes `most`
    int GetMin() const { return m_min; }
    int GetMax() const { return m_max; }
    // Within the bounds, whatever is set or typed; an empty field has the lower one.
    void SetValue(int value);
    int GetValue() const;

    void SetEnabled(bool isEnabled) override;
    // With the buttons, which keep their width.
    Area GetArea() const override;
    void SetArea(const Area& area) override;

protected:
    std::intptr_t handle(unsigned message, std::uintptr_t wParam, std::intptr_t lParam) override;

private:
    void setRange();

    Control m_spin;
    int m_min = 0;
    int m_max = 100;
};

// A dialog box from a resource. The user can move it, and close it by its buttons OK and Cancel
// (numbers 1 and 2), Enter and Esc.
class SV_API Dialog : public SystemWindow {
public:
    enum : int { kOk = 1, kCancel = 2 };  // the numbers of the buttons

    // Makes it, unseen. `owner` (not owned, may be null) must live as long as the dialog.
    Dialog(Window* owner, const ResId& id);

    // Shows it in the middle of its owner, which cannot be used meanwhile; the number of the
    // button that closed it. While modal dialogs are suppressed it is OK at once, unseen, and the
    // title is logged. `kCancel` when there is no dialog, and when the program is told to quit.
    int Execute();

protected:
    std::intptr_t handle(unsigned message, std::uintptr_t wParam, std::intptr_t lParam) override;

private:
    void end(int result);
    void center();
    void runLoop();

    Window* m_owner;
    int m_result = 0;
};

}  // namespace SV
