// The commands that script plug-ins bring.

#pragma once

#include <string>
#include <vector>

class ZelPluginZelScript;

namespace zelhost {

class Commands {
public:
    Commands() = default;
    Commands(const Commands&) = delete;
    Commands& operator=(const Commands&) = delete;
    ~Commands() { discard(); }

    // Loads the plug-ins; returns lines for the log about what came.
    std::vector<std::string> load();
    // Unloads them: no command is there from then on.
    void discard();

    // In the order of the plug-ins. Of two of one name the first one counts.
    std::vector<std::string> names() const;
    bool isKnown(const std::string& request) const { return find(request) != nullptr; }

    struct Answer {
        bool isDone = false;
        std::string text;  // without a line end
    };
    // `request` is a command and what it is asked with, separated by a blank.
    Answer run(const std::string& request) const;

private:
    struct Command {
        std::string name;
        const ZelPluginZelScript* plugin;
    };

    const Command* find(const std::string& request) const;
    void addCommandsOf(const ZelPluginZelScript& plugin, std::vector<std::string>& lines);

    std::vector<Command> m_commands;
};

}  // namespace zelhost
