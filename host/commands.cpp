#include "commands.h"

#include <algorithm>
#include <sstream>
#include <string_view>

#include "paths.h"
#include "zbasic/zplugin.h"
#include "zelhost/script.h"

namespace zelhost {

namespace {

std::string nameOf(const std::string& request) { return request.substr(0, request.find(' ')); }

std::string fileOf(const ZelBasicPlugin& plugin) {
    return fileNameOf(plugin.getPluginFilename().c_str());
}

}  // namespace

std::vector<std::string> Commands::load() {
    ZelPluginManager& manager = ZelPluginManager::Instance();
    manager.LoadPlugins();
    ZelBasicPluginList plugins;
    manager.GetAllPlugins(plugins, true);
    std::vector<std::string> lines;
    for (const ZelBasicPlugin* plugin : plugins) {
        lines.push_back("plug-in " + fileOf(*plugin) + " is loaded (" +
                        plugin->getPluginName().c_str() + ")");
        const auto* const script = dynamic_cast<const ZelPluginZelScript*>(plugin);
        if (script && script->isAccessibleInCurrentApp()) addCommandsOf(*script, lines);
    }
    return lines;
}

void Commands::addCommandsOf(const ZelPluginZelScript& plugin, std::vector<std::string>& lines) {
    std::istringstream names(plugin.GetAllCommands('\n').c_str());
    for (std::string name; std::getline(names, name);) {
        if (name.empty() || name.find(' ') != name.npos) continue;
        if (isKnown(name)) {
            lines.push_back("plug-in " + fileOf(plugin) + ": another one has the command " + name);
        } else {
            m_commands.push_back({name, &plugin});
        }
    }
}

void Commands::discard() {
    m_commands.clear();
    ZelPluginManager::Instance().DiscardPlugins();
}

std::vector<std::string> Commands::names() const {
    std::vector<std::string> names;
    for (const Command& command : m_commands) names.push_back(command.name);
    return names;
}

const Commands::Command* Commands::find(const std::string& request) const {
    const auto found = std::ranges::find(m_commands, nameOf(request), &Command::name);
    return found == m_commands.end() ? nullptr : &*found;
}

Commands::Answer Commands::run(const std::string& request) const {
    const Command* const command = find(request);
    if (!command) return {};
    ZelRyoParser parser(std::string_view(request).substr(command->name.size()));
    ZelScriptResult result;
    Answer answer;
    answer.isDone = command->plugin->handleRequest(request.c_str(), parser, result);
    answer.text = std::string(result.getText().begin(), result.getText().end());
    while (answer.text.ends_with('\n')) answer.text.pop_back();
    return answer;
}

}  // namespace zelhost
