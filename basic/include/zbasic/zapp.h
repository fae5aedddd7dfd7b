// The application frame: start-up and shut-down that all programs share.

#pragma once

#include <cstdint>
#include <memory>

#include "sv/application.h"
#include "sv/image.h"
#include "zbasic/zexport.h"

// What a program's application object is besides an `SV::Application`. The phases run
// once each, on the main thread; `ZelMDIApplication` calls them in their order.
class ZBASIC_API ZelApplicationInterface {
public:
    // Makes the program's help object on the first call and makes it the application's;
    // every call has the international resources choose the help file of tool `helpFile`.
    void createHelpObject(const char* helpFile);

    // `ZelInternational::createResourceManager`.
    bool createResourceManager(const char* const name, bool withLanguage);

    // Of the current application object; false when there is none of this kind.
    static bool IsWithGUI();    // as given to the constructor
    static bool IsAfterMain();  // has the shut-down begun?

protected:
    // `name` is the caption of fatal messages and the prefix of their codes; null is empty.
    ZelApplicationInterface(const char* name, bool withGUI);

    // First phase: command line, console, tracing, font and suppression of dialogs,
    // language and multi-language strings, PID file, start directory.
    void _beforeMain(int argc, char** argv, const SV::String& dialogLogOption);
    // Second phase, after the program's own initialisation: character set, button texts.
    void _beforeMain2();
    // Shut-down: exit event "end(<status>)", trace file, strings, help, resources.
    void _afterMain(int status);

    // What became of a failure of the tool library. True: dealt with, go on. False: a
    // message was shown, a minidump written and the exit event triggered (or this runs
    // already: the second failure is not handled).
    //
    // The message is shown even when modal dialogs are suppressed.
    bool _handleException(long code, unsigned long detail);

    // Tells the theme of a changed visual style and everybody of any change.
    void _onSystemSettingsChange(SV::SysChangeType type);

private:
    SV::String m_name;
    std::shared_ptr<SV::Help> m_help;  // copies share it
    bool m_withGUI;
    bool m_isAfterMain = false;
};

// The application class that programs derive from: wires the phases into the tool
// library and leaves three operations to the program. The order of the virtual operations is relied
// on by callers.
class ZBASIC_API ZelMDIApplication : public SV::MDIApplication, public ZelApplicationInterface {
public:
    ~ZelMDIApplication() override;
    void SysChange(SV::SysChangeType type) override;  // `_onSystemSettingsChange`
    // Start-up, `initApplication`, `runApplication`, shut-down. A status other than 0
    // ends the process with it; 0 returns.
    void Main(int argc, char** argv) override;

    // True when `_handleException` says so; else the base class decides, which ends the process.
    bool Exception(long code, unsigned long detail) override;

    // True: `PaintMDIClient` paints the prepared picture as its `ClientImageMode` says, without one
    // the theme's workspace colour, and a frame of one pixel round it.
    bool IsUserDefPaintMDIClient() override;
    void PaintMDIClient(HWND client) override;

    virtual int runApplication() = 0;   // the program's main body; its status
    virtual int initApplication() = 0;  // early initialisation; not 0: the body is not run
    // The background picture of the frame's client area and its `ClientImageMode`; false
    // when there is none.
    virtual bool getMDIClientImage(SV::Image& image, int& mode) = 0;

    // Raised by the program, never by this class.
    bool isAppInitialized() const { return m_isAppInitialized; }

    // Prepares the background from `getMDIClientImage`, at the size of the screen or
    // (with `useVirtualScreen`) of the part of the virtual screen beside it. False when
    // there is no picture or the prepared one already has that size.
    // Relied on by callers: with `useVirtualScreen` the width is the virtual screen's less
    // the screen's.
    bool MakeMDIClientImg(bool useVirtualScreen);

    // How the picture fills the area.
    enum ClientImageMode : std::int32_t {
        kNoImage = 0,    // the theme's workspace colour instead
        kStretched = 1,  // to the width and height of the area
        kFitted = 2,     // with its proportions, so that it covers the screen; the middle of that
        kCentred = 3,    // as it is, on the theme's workspace colour
        kTiled = 4,      // as it is, again and again from the left upper corner
    };

protected:
    // `dialogLogOption`: the option that names the log of suppressed dialogs when
    // "log_no_dialogs" does not.
    ZelMDIApplication(const char* name, bool withGUI, SV::String dialogLogOption);

    SV::String m_dialogLogOption;               // as given
    SV::Bitmap m_clientImage;                   // what `MakeMDIClientImg` has prepared
    std::int32_t m_clientImageMode = kNoImage;  // of that picture
    bool m_isAppInitialized = false;            // as `isAppInitialized`
};

// The directory in which the program was started, with "\" as its only separator; empty
// before start-up. `Zel_GetStartCWDFilename` puts `name` behind it.
ZBASIC_API SV::String Zel_GetStartCWD(bool withTrailingSeparator);
ZBASIC_API SV::String Zel_GetStartCWDFilename(const SV::String& name);
