#include "app/speaking_application.h"

#include <gtest/gtest.h>

#include <cstdio>

#include "zbasic/zcmdline.h"
#include "zbasic/zevent.h"

namespace {

class ExitListener : public ZelEventListener {
public:
    ExitListener() {
        setEventHandler(ZelEvent_AppExit, static_cast<Handler>(&ExitListener::onExit), 100);
    }
    void onExit(ZelEvent* event) {
        std::printf("exit: %s, after main %d\n",
                    static_cast<ZelExitAppEvent*>(event)->GetReason().c_str(),
                    ZelApplicationInterface::IsAfterMain());
        std::fflush(stdout);
    }
};

}  // namespace

SpeakingApplication::SpeakingApplication(bool withGUI)
    : ZelMDIApplication("tester", withGUI, "log") {}

int SpeakingApplication::initApplication() {
    std::puts("init");
    createResourceManager("zbasic", true);
    return ZelCmdline::Instance().getInt("init");
}

int SpeakingApplication::runApplication() {
    std::puts("run");
    if (body) body(*this);
    return ZelCmdline::Instance().getInt("run");
}

int runApplication(int argc, char** argv, void (*body)(SpeakingApplication&), bool withGUI) {
    SpeakingApplication application(withGUI);
    const ExitListener listener;
    application.body = body;
    application.Run(argc, argv);
    std::puts("returned");
    return 0;
}

void expectPart(const std::string& part, const std::string& text) {
    EXPECT_NE(text.find(part), std::string::npos) << part << "\nis not in\n" << text;
}
