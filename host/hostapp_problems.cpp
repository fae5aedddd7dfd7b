// What the program tells: its log, and what went wrong.

#include <algorithm>
#include <cstdio>
#include <span>
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
constexpr std::size_t kMostShown = 8;  // more do not fit on a small screen

SV::String linesOf(std::span<const std::string> problems) {
    SV::String text;
    for (const std::string& problem : problems) text += SV::String(problem) + "\n";
    return text;
}

}  // namespace

void HostApplication::openLog() {
    // Where it cannot be written the program does without.
    m_log.open(Zel_GetStartCWDFilename(kLogFile).c_str(), true);
    log("zelhost " + std::string(Zel_GetPatchBuildVersionString().c_str()) + " starts");
}

void HostApplication::log(const std::string& text) { m_log.addText("%s", text.c_str()); }

int HostApplication::refuse(const Message& problem) {
    const std::string english = inEnglish(problem);
    log(english);
    tell(stderr, "zelhost: " + english + "\n\n" + kUsage,
         {"%s\n\nzelhost -? shows how to call the program.", {inLanguage(problem)}});
    return kWrongUsage;
}

void HostApplication::tell(std::FILE* stream, const std::string& text,
                           const Message& boxText) const {
    std::fputs(text.c_str(), stream);
    if (IsWithGUI() && ::_fileno(stream) < 0) showBox("zelhost", inLanguage(boxText).c_str());
}

void HostApplication::report(const Message& problem, Text advice) {
    const std::string english = inEnglish(problem);
    log(english);
    std::fprintf(stderr, "%s\n", english.c_str());
    ZelDebugOut(("[zel] " + english + "\n").c_str());
    const std::string own = inLanguage(problem);
    if (std::ranges::find(m_problems, own) == m_problems.end()) m_problems.push_back(own);
    if (std::ranges::find(m_advice, advice) == m_advice.end()) m_advice.push_back(advice);
}

void HostApplication::showProblems() {
    if (m_problems.empty()) return;
    const std::vector<std::string> problems = std::exchange(m_problems, {});
    const std::vector<Text> advice = std::exchange(m_advice, {});
    if (IsModalDialogSuppression()) {
        ModalDialogSuppressionLog(linesOf(problems));
    } else if (!isClosed()) {
        const std::size_t shown = std::min(problems.size(), kMostShown);
        SV::String text = linesOf(std::span(problems).first(shown));
        if (const std::size_t more = problems.size() - shown; more > 0) {
            text += filled(Text::kMoreProblems, std::to_string(more)) + "\n";
        }
        for (const Text line : advice) text += "\n" + textOf(line);
        showProblem(text);
    }
}

}  // namespace zelhost
