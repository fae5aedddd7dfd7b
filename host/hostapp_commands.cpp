// Commands of plug-ins, and the one behind the exports.

#include <cstdio>

#include "after.h"
#include "hostapp.h"
#include "hostframe.h"

namespace zelhost {

bool HostApplication::loadCommands(Message& problem) {
    for (const std::string& line : m_commands.load()) log(line);
    for (const std::string& request : m_options.commands) {
        if (m_commands.isKnown(request)) continue;
        problem = {"no plug-in has the command \"%s\"", {request}};
        return false;
    }
    return true;
}

bool HostApplication::runCommands(const std::shared_ptr<const Model>& model) {
    bool isDone = true;
    for (const std::string& request : m_options.commands) {
        const Commands::Answer answer = run(request, model);
        if (answer.isDone) {
            std::printf("%s\n", answer.text.c_str());
        } else {
            Message failure("the command \"%s\" failed%s",
                            {request, answer.text.empty() ? "" : ": " + answer.text});
            if (model) failure.place = model->path;
            report(failure, Text::kAdviceCommand);
            isDone = false;
        }
    }
    return isDone;
}

Commands::Answer HostApplication::run(const std::string& request,
                                      std::shared_ptr<const Model> model) {
    m_current = std::move(model);
    Commands::Answer answer = m_commands.run(request);
    log("command " + request + (m_current ? " for " + m_current->name : "") +
        (answer.isDone ? ": done" : ": failed"));
    m_current.reset();
    return answer;
}

bool HostApplication::runAfter(bool isAllExported) {
    if (!isAllExported) {
        report("the command behind the export was not run, as some model failed",
               Text::kAdviceAfter);
        return false;
    }
    const AfterResult result = runAfterExport(m_options.after, m_options.outputDirectory, [this] {
        if (m_frame) Reschedule();
    });
    if (!result.exitCode) {
        report(result.problem, Text::kAdviceAfter);
        return false;
    }
    std::printf("exit code %ld: %s\n", *result.exitCode, m_options.after.c_str());
    if (!result.output.empty()) std::printf("  %s\n", result.output.c_str());
    std::fflush(stdout);
    if (*result.exitCode == 0) return true;
    report({"the command ended with exit code %s: %s",
            {std::to_string(*result.exitCode), m_options.after}},
           Text::kAdviceAfter);
    return false;
}

}  // namespace zelhost
