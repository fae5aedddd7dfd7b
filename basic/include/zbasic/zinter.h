// The language of the user interface: which there are, which is current, and the
// resource and help files that go with it.

#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "sv/resource.h"
#include "sv/string.h"
#include "zbasic/zexport.h"

// Owner of the user interface's language. All operations are static and work on
// the one instance. Main thread only.
//
// Language ids are Windows locale identifiers of 16 bits (1033 English, 1031
// German), written in decimal in names of files and folders. Files are looked for
// in the program's directory and nowhere else.
class ZBASIC_API ZelInternational {
public:
    // Reads "lang.ini", once per process; later calls do nothing. One id a line,
    // empty lines and those that begin with ";" are passed over, and so is white
    // space before the number. A line has up to 100 characters, its line feed
    // included; what is longer counts as the next line.
    //
    // A line without a number other than 0, and an id that the system does not
    // support or that has more than 16 bits, is reported as an internal error and
    // skipped. So is a missing file; then 1031 is the only language.
    static void InitAvailableLanguages();
    // The ids in the order of the file; empty before `InitAvailableLanguages`.
    static const std::vector<std::uint16_t>& GetAvailableLanguages();
    // Whether it is one of those.
    static bool IsValidLanguageID(std::uint16_t id);

    // The language of the user's Windows when it is available (first its display
    // language, then its formats; of another country, when need be), else the
    // first of the list, else 1031.
    static std::uint16_t GetDefaultLanguageID();

    // The default language until another one is set.
    static std::uint16_t GetCurrentLanguageID();
    static std::uint16_t GetCurrentWindowsLocaleID();  // the same number

    // Makes `id` the current language: sets the texts of the application's standard
    // buttons, loads every resource file anew, sets those texts again, now in the new
    // language, and selects the help file of the tool last named to
    // `switchHelpObject`. Any number is taken; languages without files of their own
    // have those beside the program. 0 goes back to the default language.
    static void SetCurrentLanguageID(std::uint16_t id);

    // About the current language, in the process code page; empty for an id that
    // the system does not know.
    static SV::String GetCurrentISOID();                        // ISO 639 and ISO 3166: "de-AT"
    static SV::String GetIso639OfBaseLanguage();                // without the country: "de"
    static SV::String GetNativeLanguageName();                  // "Deutsch"
    static SV::String GetNativeLanguageName(std::uint16_t id);  // of any language

    // The first available language with that name or code, whatever the case of
    // its letters; 0 when there is none.
    static std::uint16_t GetLanguageIDOfNativeLanguageName(const SV::String& name);
    static std::uint16_t GetLanguageIDOfNativeCountryName(const SV::String& name);
    static std::uint16_t GetLanguageIDOfEnglishLanguageName(const SV::String& name);
    static std::uint16_t GetLanguageIDOfEnglishCountryName(const SV::String& name);
    static std::uint16_t GetLanguageIDOfISO639(const SV::String& code);

    // Names of resource files, relative to the program's directory. For the base
    // name "zbasic" and the language 1033: "language\1033\zbasic18.dll" with
    // language and "language\zbasic18.dll" without; the fall-back is
    // "zbasic18.dll". Cut to 258 characters.
    static SV::String buildResDLLName(const SV::String& baseName, bool withLanguage);
    static SV::String buildResDLLNameFallback(const SV::String& baseName);

    // Loads one resource file, or the fall-back when it cannot be loaded. The
    // first one of all becomes the current one of `SV::Resource`.
    // False when both fail: then a box tells the user. The message is shown even when
    // modal dialogs are suppressed.
    static bool createResourceManager(const SV::String& baseName, bool withLanguage);
    // Whether such an attempt is running: its failure is no reason to end.
    static bool isLoadingResourceFile();
    // Whether `createResourceManager` ever failed.
    static bool errorLoadingResourceFiles();

    // Loads the files again, in their order, for the current language.
    // Relied on by callers: a file that once came from beside the program stays
    // there, for only names with two backslashes lead into a language folder.
    static void updateResourceManagers();
    // The file behind the current one of `SV::Resource`, for a search through all;
    // null behind the last, or when the current one is none of them.
    static SV::ResMgr* getNextResMgr();
    // Unloads all files. The next one that is loaded becomes the current one of
    // `SV::Resource` again.
    static void DeleteResMgrs();

    // Has the application's help use "help\<language>\<tool>.chm", or "<tool>.chm"
    // where that file does not exist.
    static void switchHelpObject(const SV::String& toolName);

    ZelInternational(const ZelInternational&) = delete;
    ZelInternational& operator=(const ZelInternational&) = delete;

private:
    ZelInternational();
    ~ZelInternational();

    void readLanguageList();
    void addLanguage(int id);
    bool load(const SV::String& fileName);
    void updateApplicationTexts();

    static ZelInternational aInstance;

    std::uint16_t m_currentLanguage = 0;  // 0: the default one
    std::vector<std::uint16_t> m_languages;
    bool m_isListRead = false;
    std::vector<std::unique_ptr<SV::ResMgr>> m_managers;  // in the order of loading
    bool m_isManagerInstalled = false;
    bool m_isLoading = false;
    bool m_hasFailed = false;
    SV::String m_toolName;
};
