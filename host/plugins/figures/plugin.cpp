// The command "figures": components, degrees and the longest path of a model. "figures order" takes
// the open model "order", without a name it is the model of the moment.

#include <cstdint>
#include <string_view>

#include "graph_figures.h"
#include "zbasic/zfarcall.h"
#include "zbasic/zinter.h"
#include "zbasic/zplugin_api.h"
#include "zelhost/script.h"

namespace {

constexpr char kCommand[] = "figures";
constexpr std::uint16_t kGerman = 1031;

struct Plugin {
    static ZelPluginZelScriptExecutionType executionType() { return kZelPluginForBoth; }
    static const char* messagePortName() { return "zelhost.figures"; }

    static bool handleRequest(const char* request, ZelRyoParser& parser, ZelMessage* message) {
        return message && handleRequest(request, parser, message->result);
    }

    static bool handleRequest(const char*, ZelRyoParser& parser, ZelScriptResult& result) {
        const bool isGerman = ZelInternational::GetCurrentLanguageID() == kGerman;
        const SV::String name = parser.next();
        ZelMemBuf model;
        ZelFarCallFactory::Instance().call(kZelhostModelCall, ZelInputData(name), model);
        if (model.getSize() == 0) {
            result.setText(isGerman ? "dieses Modell ist nicht offen" : "there is no such model");
            return false;
        }
        result.setText(SV::String(
            figures::report(figures::readGraph(model.getText()),
                            isGerman ? figures::Language::german : figures::Language::english)));
        return true;
    }

    static bool isCommandExisting(const char* command) {
        return std::string_view(command) == kCommand;
    }
    static void getAllCommands(SV::String& commands, char /*separator*/) { commands = kCommand; }
};

}  // namespace

ZEL_SCRIPT_PLUGIN(Plugin);
