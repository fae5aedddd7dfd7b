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
    String GetText() const;
    void SetText(const String& text);
    void Show();  // does nothing while windows are suppressed
    void Hide();
    bool IsVisible() const;
    Size GetClientSize() const;
    void Invalidate();  // to be painted again
    void GrabFocus();
    void BringToFront();
    void Close();  // as if the user had closed it

protected:
    Window() = default;

    // Called for the window's messages, on the main thread.
    virtual void Paint(HDC__* device);
    virtual void Resized(Size clientSize);
    virtual void Command(int id);  // of a menu or a control
    virtual bool QueryClose();     // may it close? Here: yes
    virtual void Closed();         // the system window is gone

    // Makes the system window; raises `Application::Exception(512, …)` on failure.
    void create(const char* className, const String& text, unsigned long style, HWND parent);

    // The message procedure of derived kinds of window; the default is the system's.
    virtual std::intptr_t handle(unsigned message, std::uintptr_t wParam, std::intptr_t lParam);
    virtual std::intptr_t handleDefault(unsigned message, std::uintptr_t wParam,
                                        std::intptr_t lParam);

    HWND m_handle = nullptr;

private:
    friend struct WindowProc;
};

// A menu bar or one of its menus, built from the top down, then handed to a frame.
class SV_API Menu {
public:
    enum class Kind { kBar, kPopup };

    explicit Menu(Kind kind = Kind::kPopup);
    Menu(Menu&& other) noexcept : m_handle(other.m_handle) { other.m_handle = nullptr; }
    Menu(const Menu&) = delete;
    Menu& operator=(const Menu&) = delete;
    ~Menu();

    void Append(int id, const String& text);  // "&" marks the access key
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
    explicit MDIFrame(const String& title);
    ~MDIFrame() override;

    // The frame owns it. `windowMenu` is the position in it of the menu that
    // lists the child windows, -1 for none.
    void SetMenu(Menu&& bar, int windowMenu = -1);
    HWND GetClient() const { return m_client; }
    MDIChild* GetActiveChild() const;  // null without one
    void Tile();
    void Cascade();

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
    MDIChild(MDIFrame& frame, const String& title);
    ~MDIChild() override;

    void Activate();

protected:
    std::intptr_t handleDefault(unsigned message, std::uintptr_t wParam,
                                std::intptr_t lParam) override;

private:
    MDIFrame& m_frame;
};

}  // namespace SV
