// Windows: frames, their menus, and the child windows of an MDI frame.

#pragma once

#include <cstdint>

#include "sv/application.h"
#include "sv/export.h"
#include "sv/font.h"
#include "sv/string.h"

struct HMENU__;
struct HDC__;

namespace SV {

// Owner of one system window. Main thread only.
class SV_API Window {
public:
    Window(const Window&) = delete;
    Window& operator=(const Window&) = delete;
    virtual ~Window();

    HWND GetHandle() const { return m_handle; }  // null after the user closed it
    // The title or, of a control, the text in it; up to the first NUL.
    String GetText() const;
    void SetText(const String& text);
    void Show();                 // does nothing while windows are suppressed
    void Hide();                 // the window stays, unseen
    bool IsVisible() const;      // itself, and all windows that it lies in
    Size GetClientSize() const;  // of what is inside frame, title and menu
    void Invalidate();           // to be painted again
    void GrabFocus();            // what is typed comes here
    void BringToFront();         // before the windows of other programs, if the system allows it
    void Close();                // as if the user had closed it

protected:
    Window() = default;

    // Called for the window's messages, on the main thread; nothing happens here. What they throw
    // comes out of the message loop (`Execute`, `Reschedule`, that of a dialog).
    virtual void Paint(HDC__* device);      // the whole client area; nobody has erased it
    virtual void Resized(Size clientSize);  // to this size
    virtual void Command(int id);           // of a menu or a control, below 65024
    virtual bool QueryClose();              // may it close? Here: yes
    virtual void Closed();                  // the system window is gone

    // Makes the system window, unseen unless `style` says otherwise, with `Paint` and the others
    // called from then on; raises `Application::Exception(512, system error)` on failure.
    void create(const char* className, const String& text, unsigned long style, HWND parent);

    // The message procedure of derived kinds of window; the default is the system's.
    virtual std::intptr_t handle(unsigned message, std::uintptr_t wParam, std::intptr_t lParam);
    virtual std::intptr_t handleDefault(unsigned message, std::uintptr_t wParam,
                                        std::intptr_t lParam);

    HWND m_handle = nullptr;  // null without a system window

private:
    friend struct WindowProc;
};

// A menu bar or one of its menus, built from the top down, then handed to a frame.
class SV_API Menu {
public:
    // The bar of a frame, or what opens from a bar or another menu.
    enum class Kind { kBar, kPopup };

    // Without entries.
    explicit Menu(Kind kind = Kind::kPopup);
    // What was moved from has no menu any more.
    Menu(Menu&& other) noexcept : m_handle(other.m_handle) { other.m_handle = nullptr; }
    Menu(const Menu&) = delete;
    Menu& operator=(const Menu&) = delete;
    ~Menu();

    // At the end: an entry, which calls the frame's `Command` with `id` (1 to 65023), a line, or a
    // menu that opens. "&" marks the access key; what follows a tab stands on the right.
    void Append(int id, const String& text);
    void AppendChecked(int id, const String& text, bool isChecked);
    void AppendSeparator();
    void Append(Menu&& popup, const String& text);

    HMENU__* Release();  // the caller owns it from now on

private:
    HMENU__* m_handle;
};

class MDIChild;

// The frame of an MDI application; it becomes the application window.
class SV_API MDIFrame : public Window {
public:
    // Unseen until `Show`. When the user closes it, and neither `Application::QueryExit` nor
    // `QueryClose` objects, `Application::Execute` ends.
    explicit MDIFrame(const String& title);
    ~MDIFrame() override;

    // The frame owns it. `windowMenu` is the position in it of the menu that
    // lists the child windows, -1 for none.
    void SetMenu(Menu&& bar, int windowMenu = -1);
    HWND GetClient() const { return m_client; }  // the area that child windows lie in; stays ours
    MDIChild* GetActiveChild() const;            // null without one
    void Tile();                                 // child windows side by side
    void Cascade();                              // one over the other, titles in sight

protected:
    std::intptr_t handle(unsigned message, std::uintptr_t wParam, std::intptr_t lParam) override;
    std::intptr_t handleDefault(unsigned message, std::uintptr_t wParam,
                                std::intptr_t lParam) override;

private:
    friend class MDIChild;
    friend struct WindowProc;
    HWND m_client = nullptr;
};

// A child window. Owned by whoever made it; must go before its frame.
class SV_API MDIChild : public Window {
public:
    // Shown and active at once.
    MDIChild(MDIFrame& frame, const String& title);
    ~MDIChild() override;

    void Activate();  // becomes the active child window, in front of the others

protected:
    std::intptr_t handleDefault(unsigned message, std::uintptr_t wParam,
                                std::intptr_t lParam) override;

private:
    MDIFrame& m_frame;
};

}  // namespace SV
