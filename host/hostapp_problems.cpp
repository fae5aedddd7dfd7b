// What the program tells: its log, and what went wrong.

#include <algorithm>
#include <cstdio>
#include <utility>

#include "boxes.h"
#include "hostapp.h"
#include "hostframe.h"
#include "texts.h"
#include "zbasic/ztrace.h"
#include "zbasic/zversion.h"

namespace zelhost {

namespace {

constexpr char kLogFile[] = "zelhost.log";

}  // namespace

void HostApplication::openLog() {
    // Where it cannot be written the program does without.
    m_log.open(Zel_GetStartCWDFilename(kLogFile).c_str(), true);
    log("zelhost " + std::string(Zel_GetPatchBuildVersionString().c_str()) + " starts");
}

void HostApplication::log(const std::string& text) { m_log.addText("%s", text.c_str()); }

void HostApplication::report(const Message& problem, Text advice) {
    const std::string english = inEnglish(problem);
    log(english);
    std::fprintf(stderr, "%s\n", english.c_str());
    ZelDebugOut(("[zel] " + english + "\n").c_str());
    m_problems += inLanguage(problem) + "\n";
    if (std::ranges::find(m_advice, advice) == m_advice.end()) m_advice.push_back(advice);
}

void HostApplication::showProblems() {
    if (m_problems.empty()) return;
    SV::String text(std::exchange(m_problems, {}));
    const std::vector<Text> advice = std::exchange(m_advice, {});
    if (IsModalDialogSuppression()) {
        ModalDialogSuppressionLog(text);
    } else if (!isClosed()) {
        for (const Text line : advice) text += "\n" + textOf(line);
        showProblem(text);
    }
}

}  // namespace zelhost
