// A script plug-in; TEST_EXECUTION_TYPE is the edition that it is for.

#include <cstring>
#include <stdexcept>
#include <string>

#include "app/plugins/interpreter.h"
#include "zbasic/zplugin_api.h"

namespace {

struct Plugin {
    static ZelPluginZelScriptExecutionType executionType() {
        return static_cast<ZelPluginZelScriptExecutionType>(TEST_EXECUTION_TYPE);
    }
    static const char* messagePortName() { return "test.port"; }
    static bool handleRequest(const char* request, ZelRyoParser& parser, ZelMessage* message) {
        ++parser.position;
        message->text = std::string("message: ") + request;
        return true;
    }
    static bool handleRequest(const char* request, ZelRyoParser& parser, ZelScriptResult& result) {
        if (std::strcmp(request, "throw") == 0) throw std::runtime_error("on request");
        parser.position += 10;
        result.text = std::string("result: ") + request;
        return std::strcmp(request, "fail") != 0;
    }
    static bool isCommandExisting(const char* command) {
        return std::strcmp(command, "echo") == 0 || std::strcmp(command, "fail") == 0;
    }
    static void getAllCommands(SV::String& commands, char separator) {
        commands += SV::String("echo") + SV::String(1, separator) + "fail";
    }
};

}  // namespace

ZEL_SCRIPT_PLUGIN(Plugin);
