// A script plug-in to begin with: the command "wordcount" counts the words behind it.

#include <string>
#include <string_view>

#include "zbasic/zplugin_api.h"
#include "zelhost/script.h"

namespace {

constexpr char kCommand[] = "wordcount";

struct Plugin {
    // The editions that it is for.
    static ZelPluginZelScriptExecutionType executionType() { return kZelPluginForBoth; }

    static const char* messagePortName() { return "wordcount"; }

    // A request that comes by the message port.
    static bool handleRequest(const char* request, ZelRyoParser& parser, ZelMessage* message) {
        return message && handleRequest(request, parser, message->result);
    }

    // A request of the menu or of the command line. False: it failed, and the text says why.
    static bool handleRequest(const char* /*request*/, ZelRyoParser& parser,
                              ZelScriptResult& result) {
        int count = 0;
        while (!parser.next().empty()) ++count;
        result.setText(SV::String(std::to_string(count) + " words"));
        return true;
    }

    static bool isCommandExisting(const char* command) {
        return std::string_view(command) == kCommand;
    }

    // All commands, with the separator between them.
    static void getAllCommands(SV::String& commands, char /*separator*/) { commands = kCommand; }
};

}  // namespace

ZEL_SCRIPT_PLUGIN(Plugin);
