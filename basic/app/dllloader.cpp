#include <new>

#include "diag/format.h"
#include "zbasic/zplugin.h"
#include "zbasic/ztrace.h"

#include <windows.h>

namespace {

// Without memory for the line there is none: what was done is done, and a destructor may be asking.
void tell(const char* what, const SV::String& fileName) noexcept {
    try {
        ZelDebugOut(formatted("[zeldll] %s '%s'\n", what, fileName.c_str()).c_str());
    } catch (const std::bad_alloc&) {
    }
}

}  // namespace

ZelDLLLoader::~ZelDLLLoader() { unload(); }

bool ZelDLLLoader::load(const char* fileName) {
    const SV::String name(fileName);  // it may be our own, which `unload` empties
    unload();
    m_module = ::LoadLibraryA(name.c_str());
    return finishLoading("Load", name);
}

bool ZelDLLLoader::loadExt(const char* fileName, unsigned long flags) {
    const SV::String name(fileName);
    unload();
    m_module = ::LoadLibraryExA(name.c_str(), nullptr, flags);
    return finishLoading("LoadEx", name);
}

bool ZelDLLLoader::finishLoading(const char* what, const SV::String& fileName) {
    _rememberLastError(!m_module);
    m_fileName = fileName;
    tell(what, m_fileName);
    return m_lastError == ERROR_SUCCESS;
}

bool ZelDLLLoader::unload() {
    if (!m_module) return false;
    const BOOL isDone = ::FreeLibrary(m_module);
    _rememberLastError(!isDone);
    m_module = nullptr;
    tell("Unload", m_fileName);
    m_fileName.clear();
    return m_lastError == ERROR_SUCCESS;
}

void* ZelDLLLoader::_getGenericFunctionPtr(const char* name) {
    if (!m_module) {
        ::SetLastError(ERROR_INVALID_HANDLE);  // without a module the system would ask the program
        _rememberLastError(true);
        return nullptr;
    }
    void* const function = reinterpret_cast<void*>(::GetProcAddress(m_module, name));
    _rememberLastError(!function);
    return function;
}

void ZelDLLLoader::_rememberLastError(bool failed) {
    m_lastError = failed ? ::GetLastError() : ERROR_SUCCESS;
}
