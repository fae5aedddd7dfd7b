#include "zbasic/zplugin.h"

#include <utility>

#include "app/guardedcall.h"
#include "zbasic/zversion.h"

ZelBasicPlugin::ZelBasicPlugin(ZelPluginType type, ZelDLLLoader* loader, SV::String name)
    : m_type(type), m_loader(loader), m_name(std::move(name)) {}

ZelBasicPlugin::~ZelBasicPlugin() = default;

ZelPluginGeneral::ZelPluginGeneral(ZelDLLLoader* loader)
    : ZelBasicPlugin(kZelPluginGeneral, loader, "General") {}

bool ZelPluginGeneral::init() { return true; }

ZelPluginZelScript::ZelPluginZelScript(ZelDLLLoader* loader)
    : ZelBasicPlugin(kZelPluginScript, loader, "ZelScript") {}

template <typename Function>
bool ZelPluginZelScript::find(const char* name, Function*& function) {
    function = reinterpret_cast<Function*>(loader()._getGenericFunctionPtr(name));
    return function != nullptr;
}

bool ZelPluginZelScript::init() {
    const bool isComplete = find("ZelPluginFctZelScriptGetExecutionType", m_getExecutionType) &&
                            find("ZelPluginFctZelScriptGetMessagePortName", m_getMessagePortName) &&
                            find("ZelPluginFctZelScriptHandleRequestMsg", m_handleMessage) &&
                            find("ZelPluginFctZelScriptHandleRequestDirect", m_handleDirect) &&
                            find("ZelPluginFctZelScriptIsCommandExisting", m_isCommandExisting) &&
                            find("ZelPluginFctZelScriptGetAllCommands", m_getAllCommands);
    if (!isComplete) return false;
    // Relied on by callers: QXTK takes any execution type but that of the other edition.
    if (Zel_IsQXTK()) return Zel_IsWS() || getExecutionType() != kZelPluginForWVTK;
    return isAccessibleInCurrentApp();
}

ZelPluginZelScriptExecutionType ZelPluginZelScript::getExecutionType() const {
    const int type = m_getExecutionType ? guarded(0, m_getExecutionType) : 0;
    return static_cast<ZelPluginZelScriptExecutionType>(type);
}

const char* ZelPluginZelScript::getMessagePortName() const {
    const char* const none = "";
    return m_getMessagePortName ? guarded(none, m_getMessagePortName) : none;
}

bool ZelPluginZelScript::handleRequest(const char* request, ZelRyoParser& parser,
                                       ZelMessage* message) const {
    return m_handleMessage &&
           guarded(false, [&] { return m_handleMessage(request, parser, message); });
}

bool ZelPluginZelScript::handleRequest(const char* request, ZelRyoParser& parser,
                                       ZelScriptResult& result) const {
    return m_handleDirect &&
           guarded(false, [&] { return m_handleDirect(request, parser, result); });
}

bool ZelPluginZelScript::IsCommandExisting(const char* command) const {
    return m_isCommandExisting && guarded(false, [&] { return m_isCommandExisting(command); });
}

SV::String ZelPluginZelScript::GetAllCommands(char separator) const {
    if (!m_getAllCommands) return {};
    return guarded(SV::String(), [&] {
        SV::String commands;
        m_getAllCommands(&commands, separator);
        return commands;
    });
}

bool ZelPluginZelScript::isAccessibleInCurrentApp() const {
    if (Zel_IsWS()) return true;
    switch (getExecutionType()) {
        case kZelPluginForWVTK:
            return Zel_IsWVTK();
        case kZelPluginForQXTK:
            return Zel_IsQXTK();
        case kZelPluginForBoth:
            return Zel_IsWVTK() || Zel_IsQXTK();
        default:
            return false;
    }
}
