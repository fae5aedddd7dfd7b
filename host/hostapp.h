// The program: imports the models of its command line, exports them, shows them.

#pragma once

#include <memory>
#include <set>
#include <string>
#include <vector>

#include "model_window.h"
#include "options.h"
#include "zbasic/zapp.h"

namespace zelhost {

class HostFrame;

class HostApplication : public ZelMDIApplication {
public:
    explicit HostApplication(bool withGUI);
    ~HostApplication() override;

    int initApplication() override;
    int runApplication() override;
    bool getMDIClientImage(SV::Image& image, int& mode) override;

    // Imports one file and, with windows, shows it; null when it cannot be read.
    std::shared_ptr<const Model> open(const std::string& path);
    // Writes the model's files; false when some could not be written.
    bool save(const Model& model);
    // Shows the user in one box what went wrong since the last call; where boxes are suppressed
    // it goes to their log.
    void showProblems();
    const std::string& outputDirectory() const { return m_options.outputDirectory; }

private:
    enum Status : int { kDone = 0, kSomeFailed = 1, kWrongUsage = 2 };

    int refuse(const std::string& problem);
    void report(const std::string& problem);
    bool isClosed() const;  // by the user, maybe in the middle of the work
    std::string freeName(const std::string& path);
    int process(const std::string& path);
    bool runAfter(bool isAllExported);
    void announcePhase(const char* text);

    Options m_options;
    std::unique_ptr<HostFrame> m_frame;  // null without windows
    std::set<std::string> m_names;       // of exports, in lower case
    std::string m_problems;              // not yet shown to the user
    bool m_isUsageWanted = false;
};

}  // namespace zelhost
