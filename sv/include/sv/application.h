// The program as an object.

#pragma once

#include <cstdint>

#include "sv/export.h"
#include "sv/font.h"
#include "sv/help.h"
#include "sv/international.h"
#include "sv/string.h"

// A window as the system numbers it; the type is that of its own headers.
struct HWND__;
using HWND = HWND__*;

namespace SV {

class Window;

// What of the system has changed. Any other value may come by a cast.
enum class SysChangeType : std::int32_t {
    kDisplay = 1,
    kColors = 2,
    kSettings = 3,
    kVisualStyle = 4,
};

// The one application object of a process: made by `main`, and current from its
// construction to its destruction. Main thread only, but for the settings of
// dialog suppression, which are read anywhere.
// The order of the virtual operations is relied on by callers.
class SV_API Application {
public:
    // Codes of `Exception`.
    enum ExceptionCode : long {
        kResourceMissing = 256,      // detail: its number
        kSystemObjectFailed = 512,   // detail: the system's error code
        kResourceFileFailed = 1024,  // detail: address of the file's name
    };

    // Becomes the current application object, instead of any that was.
    Application();
    Application(const Application&) = delete;
    Application& operator=(const Application&) = delete;

    virtual ~Application();
    virtual bool QueryExit();                    // may the application window close? Here: yes
    virtual void SysChange(SysChangeType type);  // called by the frame; here nothing happens
    // For programs to override and to call. This library does not; here nothing happens, and the
    // answers are 0 and false.
    virtual void AppEvent(long event);
    virtual void UserEvent(unsigned long event, void* data);
    virtual long GetExtensionCode() const { return 0; }
    virtual bool IsExtension() const { return false; }
    // Shows the help of `GetHelp`; false when there is none or it cannot be shown.
    virtual bool ActivateExtHelp();
    virtual void DeactivateExtHelp();  // for programs to override; here nothing happens
    // The program itself, with the arguments of `main`; its return ends `Run`.
    virtual void Main(int argc, char** argv);
    // A failure of this library. True: dealt with, the failed operation is to be
    // repeated or passed over. The one here ends the process with status 1.
    virtual bool Exception(long code, unsigned long detail);

    // Hands control to `Main`.
    void Run(int argc, char** argv) { Main(argc, argv); }

    // Handles messages until `Quit`, be it called meanwhile or before.
    void Execute();
    // Ends `Execute` as soon as no other message waits. A frame that is closed calls it.
    void Quit();
    // Handles the messages that are waiting, for work that takes long.
    void Reschedule();

    // The window that stands for the program; null when there is none. Not owned.
    static Window* GetAppWindow();
    static void SetAppWindow(Window* window);

    // The program's font and formats, of which copies are kept. Windows do not take them by
    // themselves: who draws or writes asks for them.
    const Font& GetAppFont() const { return m_font; }
    void ChangeAppFont(const Font& font) { m_font = font; }
    const International& GetAppInternational() const { return m_international; }
    void ChangeAppInternational(const International& settings) { m_international = settings; }
    // The program's help; not owned, null at first.
    Help* GetHelp() const { return m_help; }
    void ChangeHelp(Help* help) { m_help = help; }

    // The busy state, shown by the pointer. Calls do not nest.
    void Wait(bool isBusy);
    bool IsWait() const { return m_isBusy; }

    // Programs without a user. While modal dialogs are suppressed, boxes are answered with "OK"
    // unseen and, with a file name, logged; while windows are, they are made but never shown.
    // Neither is at first.
    static void SetModalDialogSuppression(bool isSuppressed);
    static bool IsModalDialogSuppression();
    static void SetModalDialogSuppressionLogfileName(const String& fileName);
    static const String& GetModalDialogSuppressionLogfileName();
    // Appends `text` and a line end to that file, if one is named. Failures are passed over.
    static void ModalDialogSuppressionLog(const String& text);
    // As said above of windows.
    static void SetShowWindowSuppression(bool isSuppressed);
    static bool IsShowWindowSuppression();

private:
    Font m_font;
    International m_international;
    Help* m_help = nullptr;
    bool m_isBusy = false;
};

// An application whose documents lie in child windows of one frame.
class SV_API MDIApplication : public Application {
public:
    // Whether `PaintMDIClient` paints the area behind the child windows, all of it, on a device
    // context that it gets of `client`. Here: no, the system paints it.
    virtual bool IsUserDefPaintMDIClient();
    virtual void PaintMDIClient(HWND client);
};

// The current application object, or null.
SV_API Application* GetpApp();

// A modal message box by `MessageBoxA`'s rules, with the busy state switched off
// while it is open. Dialog suppression is the caller's affair. The number of the button; another
// one, with the thread's last error, when the box could not be shown.
SV_API int ShowMessageBox(Window* owner, const String& text, const String& caption,
                          unsigned int style);

}  // namespace SV
