#include "zbasic/zversion.h"

#include <cstring>

#include "diag/librarytext.h"
#include "diag/versiontext.h"
#include "zbasic/zcmdline.h"

namespace {

constexpr char kDataVersion[] = "4.0";
constexpr std::size_t kCoreVarCount = 235;
constexpr std::uint32_t kToolNameWVTK = 10515;
constexpr std::uint32_t kToolNameQXTK = 10516;
constexpr std::uint32_t kToolNameOther = 10535;

long g_coreVars[kCoreVarCount] = {};
long g_noCoreVar = 0;  // what an index out of range refers to
ZelApplicationType g_applicationType = kZelApplicationQXTK;
bool g_isWebService = false;
ZelBasicFileLogger* g_webServiceLogger = nullptr;
SV::String g_toolName;

int number(std::string_view text) { return SV::h_atoi(SV::String(text)); }

std::uint32_t toolNameResource() {
    switch (g_applicationType) {
        case kZelApplicationWVTK:
            return kToolNameWVTK;
        case kZelApplicationQXTK:
            return kToolNameQXTK;
        default:
            return kToolNameOther;
    }
}

SV::String findToolName() {
    const SV::String name = ZelCmdline::Instance().getToolName();
    return name.empty() ? libraryText(toolNameResource()) : name;
}

// Null when there is no such variable.
long* coreVar(ZelCoreVarType index) {
    const auto place = static_cast<std::size_t>(index);  // negative: far out of range
    return place < kCoreVarCount ? &g_coreVars[place] : nullptr;
}

}  // namespace

int Zel_GetVersionHigh() { return number(kVersion.high); }
int Zel_GetVersionLow() { return number(kVersion.low); }
int Zel_GetVersionPatch() { return number(kVersion.patch); }
int Zel_GetVersionBuild() { return number(kVersion.build); }
SV::String Zel_GetVersionDev() { return SV::String(kVersion.developmentTag); }
SV::String Zel_GetDataVersion() { return kDataVersion; }

SV::String Zel_GetVersionString() { return versionText(kVersion); }
SV::String Zel_GetBuildVersionString() { return buildVersionText(kVersion); }
SV::String Zel_GetPatchVersionString() { return patchVersionText(kVersion); }
SV::String Zel_GetPatchBuildVersionString() { return patchBuildVersionText(kVersion); }

int Zel_GetVersionIdentifier() {
    return (Zel_GetVersionHigh() * 100 + Zel_GetVersionLow()) * 1000000 + Zel_GetVersionBuild();
}

ZelApplicationInfo ZelApplicationInfo::aInstance;

// Relied on by callers: keys are compared up to their first NUL.
bool ZelApplicationInfo::ByText::operator()(const SV::String& a, const SV::String& b) const {
    return std::strcmp(a.c_str(), b.c_str()) < 0;
}

void ZelApplicationInfo::SetValue(const SV::String& key, const SV::String& value) {
    aInstance.m_values[key] = value;
}

SV::String ZelApplicationInfo::GetInfo() {
    SV::String text;
    for (const auto& [key, value] : aInstance.m_values) {
        if (!text.empty()) text += '\n';
        text += key + ": " + value;
    }
    return text;
}

long& Zel_GetCoreVar(ZelCoreVarType index) {
    if (long* const variable = coreVar(index)) return *variable;
    g_noCoreVar = 0;
    return g_noCoreVar;
}

// Writes nothing: any thread may read.
long Zel_GetCoreVarConst(ZelCoreVarType index) {
    const long* const variable = coreVar(index);
    return variable ? *variable : 0;
}

void Zel_SetCoreVar(ZelCoreVarType index, long value) { Zel_GetCoreVar(index) = value; }

void Zel_SetApplicationType(ZelApplicationType type) { g_applicationType = type; }
ZelApplicationType Zel_GetApplicationType() { return g_applicationType; }
bool Zel_IsWVTK() { return g_applicationType == kZelApplicationWVTK; }
bool Zel_IsQXTK() { return g_applicationType == kZelApplicationQXTK; }

void Zel_SetWS(bool isWebService) { g_isWebService = isWebService; }
bool Zel_IsWS() { return g_isWebService; }
void Zel_SetWSLogger(ZelBasicFileLogger* logger) { g_webServiceLogger = logger; }
ZelBasicFileLogger* Zel_GetWSLogger() { return g_webServiceLogger; }

SV::String Zel_GetToolName(bool reset) {
    if (reset) g_toolName.clear();
    if (g_toolName.empty()) g_toolName = findToolName();
    return g_toolName;
}
