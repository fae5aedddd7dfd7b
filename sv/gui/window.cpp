#include "sv/window.h"

#include <string>

#include "callback.h"

#include <windows.h>

namespace SV {

// The system's way into `Window`: it knows a procedure a class, not objects.
struct WindowProc {
    static LRESULT CALLBACK onMessage(HWND handle, UINT message, WPARAM wParam, LPARAM lParam);
    static LRESULT CALLBACK onClientMessage(HWND handle, UINT message, WPARAM wParam,
                                            LPARAM lParam);
    static Window* of(HWND handle) {
        return reinterpret_cast<Window*>(::GetWindowLongPtrA(handle, GWLP_USERDATA));
    }
    static void attach(HWND handle, Window* window) {
        ::SetWindowLongPtrA(handle, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(window));
        window->m_handle = handle;
    }
    static void detach(HWND handle, Window* window) {
        ::SetWindowLongPtrA(handle, GWLP_USERDATA, 0);
        window->m_handle = nullptr;
        answerSystem([window] {
            window->Closed();
            return 0;
        });
    }
    static Window* objectOf(LPARAM createParameters) {
        void* const given = reinterpret_cast<CREATESTRUCTA*>(createParameters)->lpCreateParams;
        return static_cast<Window*>(given);
    }
    // For child windows the MDI client wraps what it was given.
    static Window* childObjectOf(LPARAM createParameters) {
        void* const given = reinterpret_cast<CREATESTRUCTA*>(createParameters)->lpCreateParams;
        return reinterpret_cast<Window*>(static_cast<MDICREATESTRUCTA*>(given)->lParam);
    }
};

namespace {

constexpr char kFrameClass[] = "SvMDIFrame";
constexpr char kChildClass[] = "SvMDIChild";
constexpr UINT kFirstChildId = 0xFE00;  // below are menu commands
constexpr int kNoteOfMenu = 0;          // high word of WM_COMMAND for menus

HINSTANCE ownModule() {
    static const HINSTANCE module = [] {
        HMODULE found = nullptr;
        ::GetModuleHandleExA(
            GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
            kFrameClass, &found);
        return found;
    }();
    return module;
}

void registerClass(const char* name, HBRUSH background) {
    WNDCLASSEXA definition = {};
    definition.cbSize = sizeof definition;
    definition.style = CS_HREDRAW | CS_VREDRAW;
    definition.lpfnWndProc = WindowProc::onMessage;
    definition.hInstance = ownModule();
    definition.hIcon = ::LoadIcon(nullptr, IDI_APPLICATION);
    definition.hCursor = ::LoadCursor(nullptr, IDC_ARROW);
    definition.hbrBackground = background;
    definition.lpszClassName = name;
    ::RegisterClassExA(&definition);
}

void registerClasses() {
    static const bool done = [] {
        registerClass(kFrameClass, nullptr);
        registerClass(kChildClass, nullptr);  // children paint all of themselves
        return true;
    }();
    static_cast<void>(done);
}

void raiseSystemObjectFailed() {
    const DWORD error = ::GetLastError();
    if (Application* const application = GetpApp()) {
        application->Exception(Application::kSystemObjectFailed, error);
    }
}

// Between the system's two calls for it, whatever happens: a window stays to be painted otherwise.
class Painting {
public:
    explicit Painting(HWND window) : m_window(window), m_device(::BeginPaint(window, &m_paint)) {}
    Painting(const Painting&) = delete;
    Painting& operator=(const Painting&) = delete;
    ~Painting() { ::EndPaint(m_window, &m_paint); }

    HDC device() const { return m_device; }

private:
    PAINTSTRUCT m_paint;
    HWND m_window;
    HDC m_device;
};

void tellApplication(UINT message) {
    Application* const application = GetpApp();
    if (!application) return;
    switch (message) {
        case WM_DISPLAYCHANGE:
            application->SysChange(SysChangeType::kDisplay);
            break;
        case WM_SYSCOLORCHANGE:
            application->SysChange(SysChangeType::kColors);
            break;
        case WM_SETTINGCHANGE:
            application->SysChange(SysChangeType::kSettings);
            break;
        case WM_THEMECHANGED:
            application->SysChange(SysChangeType::kVisualStyle);
            break;
        default:
            break;
    }
}

}  // namespace

LRESULT CALLBACK WindowProc::onMessage(HWND handle, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_NCCREATE) {
        char name[32] = "";
        ::GetClassNameA(handle, name, sizeof name);
        attach(handle,
               std::string_view(name) == kChildClass ? childObjectOf(lParam) : objectOf(lParam));
    }
    Window* const window = of(handle);
    if (!window) return ::DefWindowProcA(handle, message, wParam, lParam);
    const LRESULT result = answerSystem([&] { return window->handle(message, wParam, lParam); });
    if (message == WM_NCDESTROY) detach(handle, window);
    return result;
}

// The system's own client window, with the application's painting behind the children.
LRESULT CALLBACK WindowProc::onClientMessage(HWND handle, UINT message, WPARAM wParam,
                                             LPARAM lParam) {
    const auto original = reinterpret_cast<WNDPROC>(::GetPropA(handle, "SvOriginal"));
    auto* const application = dynamic_cast<MDIApplication*>(GetpApp());
    const bool isOurs = application && application->IsUserDefPaintMDIClient();
    switch (message) {
        case WM_ERASEBKGND:
            if (isOurs) return 1;
            break;
        case WM_PAINT:
            if (!isOurs) break;
            { const Painting done(handle); }  // `PaintMDIClient` paints all, by its own device
            return answerSystem([&] {
                application->PaintMDIClient(handle);
                return 0;
            });
        case WM_SIZE:
            ::InvalidateRect(handle, nullptr, FALSE);
            break;
        case WM_KEYDOWN:  // has the focus as long as there are no children
            return ::SendMessageA(::GetParent(handle), message, wParam, lParam);
        case WM_NCDESTROY:
            ::RemovePropA(handle, "SvOriginal");
            break;
        default:
            break;
    }
    return ::CallWindowProcA(original, handle, message, wParam, lParam);
}

Window::~Window() {
    if (!m_handle) return;
    ::SetWindowLongPtrA(m_handle, GWLP_USERDATA, 0);  // nothing may reach the object any more
    ::DestroyWindow(m_handle);
}

void Window::create(const char* className, const String& text, unsigned long style, HWND parent) {
    registerClasses();
    ::CreateWindowExA(0, className, text.c_str(), style, CW_USEDEFAULT, CW_USEDEFAULT,
                      CW_USEDEFAULT, CW_USEDEFAULT, parent, nullptr, ownModule(), this);
    if (!m_handle) raiseSystemObjectFailed();
}

String Window::GetText() const {
    std::string text(static_cast<std::size_t>(::GetWindowTextLengthA(m_handle)) + 1, '\0');
    const int length = ::GetWindowTextA(m_handle, text.data(), static_cast<int>(text.size()));
    return String(text.data(), static_cast<std::size_t>(length));
}

void Window::SetText(const String& text) { ::SetWindowTextA(m_handle, text.c_str()); }

void Window::Show() {
    if (!Application::IsShowWindowSuppression()) ::ShowWindow(m_handle, SW_SHOW);
}

void Window::Hide() { ::ShowWindow(m_handle, SW_HIDE); }

bool Window::IsVisible() const { return ::IsWindowVisible(m_handle); }

Size Window::GetClientSize() const {
    RECT area = {};
    ::GetClientRect(m_handle, &area);
    return {static_cast<int>(area.right), static_cast<int>(area.bottom)};
}

void Window::Invalidate() { ::InvalidateRect(m_handle, nullptr, FALSE); }

void Window::GrabFocus() { ::SetFocus(m_handle); }

void Window::BringToFront() { ::SetForegroundWindow(m_handle); }

void Window::Close() { ::SendMessageA(m_handle, WM_CLOSE, 0, 0); }

void Window::Paint(HDC__*) {}
void Window::Resized(Size) {}
void Window::Command(int) {}
bool Window::QueryClose() { return true; }
void Window::Closed() {}

std::intptr_t Window::handle(unsigned message, std::uintptr_t wParam, std::intptr_t lParam) {
    switch (message) {
        case WM_ERASEBKGND:
            return 1;
        case WM_PAINT:
            Paint(Painting(m_handle).device());
            return 0;
        case WM_SIZE:
            Resized({LOWORD(lParam), HIWORD(lParam)});
            break;
        case WM_COMMAND:
            if (HIWORD(wParam) == kNoteOfMenu && LOWORD(wParam) < kFirstChildId) {
                Command(LOWORD(wParam));
            }
            break;
        case WM_SETCURSOR:
            if (GetpApp() && GetpApp()->IsWait()) {
                ::SetCursor(::LoadCursor(nullptr, IDC_WAIT));
                return TRUE;
            }
            break;
        case WM_CLOSE:
            if (!QueryClose()) return 0;
            break;
        default:
            break;
    }
    return handleDefault(message, wParam, lParam);
}

std::intptr_t Window::handleDefault(unsigned message, std::uintptr_t wParam, std::intptr_t lParam) {
    return ::DefWindowProcA(m_handle, message, wParam, lParam);
}

Menu::Menu(Kind kind) : m_handle(kind == Kind::kBar ? ::CreateMenu() : ::CreatePopupMenu()) {}

Menu::~Menu() {
    if (m_handle) ::DestroyMenu(m_handle);
}

void Menu::Append(int id, const String& text) { AppendChecked(id, text, false); }

void Menu::AppendChecked(int id, const String& text, bool isChecked) {
    ::AppendMenuA(m_handle, static_cast<UINT>(MF_STRING | (isChecked ? MF_CHECKED : MF_UNCHECKED)),
                  static_cast<UINT_PTR>(id), text.c_str());
}

void Menu::AppendSeparator() { ::AppendMenuA(m_handle, MF_SEPARATOR, 0, nullptr); }

void Menu::Append(Menu&& popup, const String& text) {
    ::AppendMenuA(m_handle, MF_POPUP, reinterpret_cast<UINT_PTR>(popup.Release()), text.c_str());
}

HMENU__* Menu::Release() {
    HMENU__* const released = m_handle;
    m_handle = nullptr;
    return released;
}

MDIFrame::MDIFrame(const String& title) {
    create(kFrameClass, title, WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN, nullptr);
    if (!m_handle) return;
    CLIENTCREATESTRUCT client = {nullptr, kFirstChildId};
    m_client = ::CreateWindowExA(WS_EX_CLIENTEDGE, "MDICLIENT", nullptr,
                                 WS_CHILD | WS_CLIPCHILDREN | WS_CLIPSIBLINGS | WS_VISIBLE, 0, 0, 0,
                                 0, m_handle, nullptr, ownModule(), &client);
    if (!m_client) {
        raiseSystemObjectFailed();
        return;
    }
    const LONG_PTR original = ::SetWindowLongPtrA(
        m_client, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(WindowProc::onClientMessage));
    ::SetPropA(m_client, "SvOriginal", reinterpret_cast<HANDLE>(original));
    Application::SetAppWindow(this);
    const Size size = GetClientSize();
    ::MoveWindow(m_client, 0, 0, size.width, size.height, TRUE);
}

MDIFrame::~MDIFrame() {
    if (Application::GetAppWindow() == this) Application::SetAppWindow(nullptr);
}

void MDIFrame::SetMenu(Menu&& bar, int windowMenu) {
    const HMENU old = ::GetMenu(m_handle);
    const HMENU handle = bar.Release();
    const HMENU list = windowMenu < 0 ? nullptr : ::GetSubMenu(handle, windowMenu);
    ::SendMessageA(m_client, WM_MDISETMENU, reinterpret_cast<WPARAM>(handle),
                   reinterpret_cast<LPARAM>(list));
    ::DrawMenuBar(m_handle);
    if (old) ::DestroyMenu(old);
}

MDIChild* MDIFrame::GetActiveChild() const {
    const auto active = reinterpret_cast<HWND>(::SendMessageA(m_client, WM_MDIGETACTIVE, 0, 0));
    return active ? static_cast<MDIChild*>(WindowProc::of(active)) : nullptr;
}

void MDIFrame::Tile() { ::SendMessageA(m_client, WM_MDITILE, MDITILE_VERTICAL, 0); }

void MDIFrame::Cascade() { ::SendMessageA(m_client, WM_MDICASCADE, 0, 0); }

std::intptr_t MDIFrame::handle(unsigned message, std::uintptr_t wParam, std::intptr_t lParam) {
    if (message == WM_SIZE && m_client) {
        ::MoveWindow(m_client, 0, 0, LOWORD(lParam), HIWORD(lParam), TRUE);
        Resized({LOWORD(lParam), HIWORD(lParam)});
        return 0;  // the default would lay the client out again
    }
    if (message == WM_CLOSE && GetpApp() && !GetpApp()->QueryExit()) return 0;
    if (message == WM_NCDESTROY && GetpApp()) GetpApp()->Quit();
    tellApplication(message);
    return Window::handle(message, wParam, lParam);
}

std::intptr_t MDIFrame::handleDefault(unsigned message, std::uintptr_t wParam,
                                      std::intptr_t lParam) {
    return ::DefFrameProcA(m_handle, m_client, message, wParam, lParam);
}

MDIChild::MDIChild(MDIFrame& frame, const String& title) : m_frame(frame) {
    registerClasses();
    MDICREATESTRUCTA creation = {};
    creation.szClass = kChildClass;
    creation.szTitle = title.c_str();
    creation.hOwner = ownModule();
    creation.x = creation.y = creation.cx = creation.cy = CW_USEDEFAULT;
    creation.lParam = reinterpret_cast<LPARAM>(static_cast<Window*>(this));
    ::SendMessageA(frame.GetClient(), WM_MDICREATE, 0, reinterpret_cast<LPARAM>(&creation));
    if (!m_handle) raiseSystemObjectFailed();
}

MDIChild::~MDIChild() {
    if (!m_handle) return;
    ::SetWindowLongPtrA(m_handle, GWLP_USERDATA, 0);
    ::SendMessageA(m_frame.GetClient(), WM_MDIDESTROY, reinterpret_cast<WPARAM>(m_handle), 0);
    m_handle = nullptr;
}

void MDIChild::Activate() {
    ::SendMessageA(m_frame.GetClient(), WM_MDIACTIVATE, reinterpret_cast<WPARAM>(m_handle), 0);
}

std::intptr_t MDIChild::handleDefault(unsigned message, std::uintptr_t wParam,
                                      std::intptr_t lParam) {
    return ::DefMDIChildProcA(m_handle, message, wParam, lParam);
}

}  // namespace SV
