// The library's version, and what the running program says about itself.

#pragma once

#include <cstdint>
#include <map>

#include "sv/string.h"
#include "zbasic/zexport.h"
#include "zbasic/zversionnumber.h"

class ZelBasicFileLogger;  // zbasic/zfilelog.h

// All of this is process-wide, without locks: set it during start-up on the main
// thread; from then on any thread may read.

// The version of the loaded library; `zbasic/zversionnumber.h` has that of the headers.
ZBASIC_API int Zel_GetVersionHigh();
ZBASIC_API int Zel_GetVersionLow();
ZBASIC_API int Zel_GetVersionPatch();
ZBASIC_API int Zel_GetVersionBuild();
ZBASIC_API SV::String Zel_GetVersionDev();  // tag of a development version; else empty

ZBASIC_API SV::String Zel_GetDataVersion();  // of the data that programs exchange: "4.0"

// "1.8". Relied on by callers: zeros at the end are cut, so that 1.10 shows as "1.1".
ZBASIC_API SV::String Zel_GetVersionString();
// "1.8_230922", the build with at least four digits.
ZBASIC_API SV::String Zel_GetBuildVersionString();

ZBASIC_API SV::String Zel_GetPatchVersionString();  // "1.8.0"
// "1.8.0.230922", the build with at least four digits, then "-" and the development tag if any.
ZBASIC_API SV::String Zel_GetPatchBuildVersionString();
// (high * 100 + low) * 1000000 + build: 108230922. Plug-ins must answer the same.
ZBASIC_API int Zel_GetVersionIdentifier();

// What the program wants to be known in its about box and in texts for support.
class ZBASIC_API ZelApplicationInfo {
public:
    // Sets or replaces the value of `key`.
    static void SetValue(const SV::String& key, const SV::String& value);

    // "key: value" lines in the order of the keys' bytes, without a line end behind the last.
    static SV::String GetInfo();

private:
    // Relied on by callers: keys are compared up to their first NUL.
    struct ByText {
        bool operator()(const SV::String& a, const SV::String& b) const;
    };

    static ZelApplicationInfo aInstance;

    std::map<SV::String, SV::String, ByText> m_values;
};

// An index of the core variables, 0 to 234; programs define their own enumerators.
enum ZelCoreVarType : std::int32_t {};

// Numbers that the parts of a program share, all 0 at first. Any other index is
// a caller's fault: such a variable reads as 0 and keeps nothing.
ZBASIC_API long& Zel_GetCoreVar(ZelCoreVarType index);
ZBASIC_API long Zel_GetCoreVarConst(ZelCoreVarType index);
ZBASIC_API void Zel_SetCoreVar(ZelCoreVarType index, long value);

// Which edition of the toolkit runs. Other values are neither of the two.
enum ZelApplicationType : std::int32_t {
    kZelApplicationWVTK = 0,
    kZelApplicationQXTK = 1,  // until told otherwise
};

// That edition. `Zel_IsWVTK` and `Zel_IsQXTK` are both false for any other value.
ZBASIC_API void Zel_SetApplicationType(ZelApplicationType type);
ZBASIC_API ZelApplicationType Zel_GetApplicationType();
ZBASIC_API bool Zel_IsWVTK();
ZBASIC_API bool Zel_IsQXTK();

// Whether this process is the web-service host, and its logger: not owned, null at first.
ZBASIC_API void Zel_SetWS(bool isWebService);
ZBASIC_API bool Zel_IsWS();
ZBASIC_API void Zel_SetWSLogger(ZelBasicFileLogger* logger);
ZBASIC_API ZelBasicFileLogger* Zel_GetWSLogger();

// The name that the tool shows to its users: the option "toolname", else a text
// of the current language for the edition. Found once; `reset` finds it anew, for
// another language or edition.
ZBASIC_API SV::String Zel_GetToolName(bool reset = false);
