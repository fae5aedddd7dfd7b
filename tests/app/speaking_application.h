// An application for tests of the platform's start-up and shut-down.

#pragma once

#include <string>

#include "zbasic/zapp.h"

// Says on standard output what start-up and shut-down do.
class SpeakingApplication : public ZelMDIApplication {
public:
    explicit SpeakingApplication(bool withGUI = true);

    // Both end as the options "init" and "run" say.
    int initApplication() override;
    int runApplication() override;
    bool getMDIClientImage(SV::Image&, int&) override { return false; }
    using ZelApplicationInterface::_handleException;

    void (*body)(SpeakingApplication&) = nullptr;
};

// The `main` of a child: runs one with that body, and says so when its end is announced.
int runApplication(int argc, char** argv, void (*body)(SpeakingApplication&), bool withGUI = true);

// Fails the test unless `text`, all that was printed, has that part.
void expectPart(const std::string& part, const std::string& text);
