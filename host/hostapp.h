// The program: imports the models of its command line, exports them, shows them.

#pragma once

#include <cstdio>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "commands.h"
#include "model/caption_filter.h"
#include "model_window.h"
#include "options.h"
#include "texts.h"
#include "zbasic/zapp.h"
#include "zbasic/zfilelog.h"

namespace zelhost {

class HostFrame;

class HostApplication : public ZelMDIApplication {
public:
    explicit HostApplication(bool withGUI);
    ~HostApplication() override;

    int initApplication() override;
    int runApplication() override;
    bool getMDIClientImage(SV::Image& image, int& mode) override;

    // Imports one file and, with windows, shows it; null when it cannot be read or the user has
    // stopped it.
    std::shared_ptr<const Model> open(const std::string& path);
    // Writes the model's files; false when some could not be written or the user has stopped it.
    bool save(const Model& model);

    // Work on models, of which the user sees the progress and which he can stop: see `Work`. What
    // is within other work does not begin anew.
    void beginWork();
    void endWork();
    void stopWork();
    // False once the user has stopped the work, closed the window or pressed Ctrl+C.
    bool isWorkWanted() const;

    // Shows the user in one box what went wrong since the last call; where boxes are suppressed
    // it goes to their log.
    void showProblems();
    // The open model of that name; without a name the model of the moment. Null when there is none.
    std::shared_ptr<const Model> findModel(const std::string& name) const;

    const Commands& commands() const { return m_commands; }
    // Runs a command for a model, which may be null, and notes it in the log.
    Commands::Answer run(const std::string& request, std::shared_ptr<const Model> model);

    const std::string& outputDirectory() const { return m_options.outputDirectory; }

private:
    enum Status : int { kDone = 0, kSomeFailed = 1, kWrongUsage = 2, kStopped = 3 };

    int refuse(const Message& problem);
    // What somebody asked for on the command line: to the stream, or to a box where that leads
    // nowhere, as with a program that no console has started.
    void tell(std::FILE* stream, const std::string& text, const Message& boxText) const;
    // `advice` says in the box what the user can do.
    void report(const Message& problem, Text advice);
    bool isClosed() const;  // by the user, maybe in the middle of the work
    std::string freeName(const std::string& path);
    int processAll();
    void handleMessages();
    int process(const std::string& path);
    int importAndExport(const std::string& path);
    bool read(Model& model);
    bool draw(Model& model);
    void noteStop(const std::string& path);
    bool runAfter(bool isAllExported);
    bool loadCommands(Message& problem);
    bool runCommands(const std::shared_ptr<const Model>& model);
    void openLog();
    void log(const std::string& text);
    void announcePhase(const char* text);

    Options m_options;
    ZelBasicFileLogger m_log;  // "zelhost.log"
    Commands m_commands;
    std::shared_ptr<const Model> m_current;          // while a command runs for it
    std::vector<std::weak_ptr<const Model>> m_open;  // those that are gone included
    std::optional<CaptionFilter> m_filter;           // of `-match`
    std::unique_ptr<HostFrame> m_frame;              // null without windows
    std::set<std::string> m_names;                   // of exports, in lower case
    std::vector<std::string> m_problems;             // not yet shown to the user
    std::vector<Text> m_advice;                      // about them
    int m_works = 0;                                 // one within the other
    bool m_isStopped = false;
    bool m_isUsageWanted = false;
    bool m_isUserWanted = false;
};

}  // namespace zelhost
