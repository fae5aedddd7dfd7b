#include "zbasic/zinter.h"

#include <algorithm>
#include <cstdio>
#include <memory>

#include "diag/comparetext.h"
#include "diag/format.h"
#include "sv/path.h"
#include "time/languagelist.h"
#include "time/localeitem.h"
#include "zbasic/ztrace.h"

#include <windows.h>

namespace {

constexpr char kSource[] = "zinter.cpp";
constexpr unsigned kListMissing = 349;
constexpr unsigned kNoLanguageNumber = 376;
constexpr unsigned kUnknownLanguage = 377;

constexpr char kListFile[] = "lang.ini";
constexpr std::uint16_t kGerman = 1031;

struct FileCloser {
    void operator()(std::FILE* file) const { std::fclose(file); }
};
using File = std::unique_ptr<std::FILE, FileCloser>;

// The first available language whose locale item is `value`; 0 when there is none.
std::uint16_t findLanguage(unsigned long item, const SV::String& value) {
    if (value.empty()) return 0;
    for (const std::uint16_t id : ZelInternational::GetAvailableLanguages()) {
        if (isEqualIgnoringCase(localeItem(id, item), value)) return id;
    }
    return 0;
}

// `wanted`, or the same language as another country speaks it; 0 when neither is there.
std::uint16_t closestAvailable(std::uint16_t wanted) {
    if (ZelInternational::IsValidLanguageID(wanted)) return wanted;
    const auto& available = ZelInternational::GetAvailableLanguages();
    const auto found = std::ranges::find_if(available, [wanted](std::uint16_t id) {
        return PRIMARYLANGID(id) == PRIMARYLANGID(wanted);
    });
    return found == available.end() ? 0 : *found;
}

}  // namespace

ZelInternational ZelInternational::aInstance;

ZelInternational::ZelInternational() = default;
ZelInternational::~ZelInternational() = default;

void ZelInternational::InitAvailableLanguages() {
    if (aInstance.m_isListRead) return;
    aInstance.m_isListRead = true;  // first: what reports a fault of the list must not read it anew
    try {
        aInstance.readLanguageList();
    } catch (...) {
        aInstance.m_languages.clear();
        aInstance.m_isListRead = false;
        throw;
    }
}

void ZelInternational::readLanguageList() {
    const File file(std::fopen((SV::GetProgramDirectory() + kListFile).c_str(), "rN"));
    if (!file) {
        displayErrorMessage(kSource, kListMissing);
        m_languages = {kGerman};
        return;
    }
    ::readLanguageList(file.get(), [this](int id) { addLanguage(id); });
}

void ZelInternational::addLanguage(int id) {
    if (id == 0) {
        displayErrorMessage(kSource, kNoLanguageNumber);
        return;
    }
    if (id < 0 || id > UINT16_MAX || !::IsValidLocale(static_cast<LCID>(id), LCID_SUPPORTED)) {
        displayErrorMessage(kSource, kUnknownLanguage);
        return;
    }
    ZelDebugOut(formatted("[locale] Adding locale %d\n", id).c_str());
    m_languages.push_back(static_cast<std::uint16_t>(id));
}

const std::vector<std::uint16_t>& ZelInternational::GetAvailableLanguages() {
    return aInstance.m_languages;
}

bool ZelInternational::IsValidLanguageID(std::uint16_t id) {
    return std::ranges::find(aInstance.m_languages, id) != aInstance.m_languages.end();
}

std::uint16_t ZelInternational::GetDefaultLanguageID() {
    for (const std::uint16_t id : {::GetUserDefaultUILanguage(), ::GetUserDefaultLangID()}) {
        if (const std::uint16_t available = closestAvailable(id)) return available;
    }
    return aInstance.m_languages.empty() ? kGerman : aInstance.m_languages.front();
}

std::uint16_t ZelInternational::GetCurrentLanguageID() {
    const std::uint16_t id = aInstance.m_currentLanguage;
    return id != 0 ? id : GetDefaultLanguageID();
}

std::uint16_t ZelInternational::GetCurrentWindowsLocaleID() { return GetCurrentLanguageID(); }

void ZelInternational::SetCurrentLanguageID(std::uint16_t id) {
    aInstance.m_currentLanguage = id;
    ZelDebugOut(formatted("[locale] Changing default language to %d (%s)\n", GetCurrentLanguageID(),
                          GetNativeLanguageName().c_str())
                    .c_str());
    // Callers know the buttons to be set before the files are; only behind these are their
    // texts those of the new language.
    aInstance.updateApplicationTexts();
    updateResourceManagers();
    aInstance.updateApplicationTexts();
    if (!aInstance.m_toolName.empty()) switchHelpObject(aInstance.m_toolName);
}

SV::String ZelInternational::GetCurrentISOID() {
    const SV::String country = localeItem(GetCurrentLanguageID(), LOCALE_SISO3166CTRYNAME);
    const SV::String language = GetIso639OfBaseLanguage();
    return country.empty() ? language : language + "-" + country;
}

SV::String ZelInternational::GetIso639OfBaseLanguage() {
    return localeItem(GetCurrentLanguageID(), LOCALE_SISO639LANGNAME);
}

SV::String ZelInternational::GetNativeLanguageName() {
    return GetNativeLanguageName(GetCurrentLanguageID());
}

SV::String ZelInternational::GetNativeLanguageName(std::uint16_t id) {
    return localeItem(id, LOCALE_SNATIVELANGNAME);
}

std::uint16_t ZelInternational::GetLanguageIDOfNativeLanguageName(const SV::String& name) {
    return findLanguage(LOCALE_SNATIVELANGNAME, name);
}

std::uint16_t ZelInternational::GetLanguageIDOfNativeCountryName(const SV::String& name) {
    return findLanguage(LOCALE_SNATIVECTRYNAME, name);
}

std::uint16_t ZelInternational::GetLanguageIDOfEnglishLanguageName(const SV::String& name) {
    return findLanguage(LOCALE_SENGLANGUAGE, name);
}

std::uint16_t ZelInternational::GetLanguageIDOfEnglishCountryName(const SV::String& name) {
    return findLanguage(LOCALE_SENGCOUNTRY, name);
}

std::uint16_t ZelInternational::GetLanguageIDOfISO639(const SV::String& code) {
    return findLanguage(LOCALE_SISO639LANGNAME, code);
}
