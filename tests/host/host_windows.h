// The windows of the host: of one that runs inside of a child of the test program, which sees it as
// a part of the program does, and of one that is a program of its own, as a user sees it.

#pragma once

#include <string>
#include <vector>

#include "support/box_watcher.h"
#include "support/child.h"
#include "support/temp_dir.h"

#include <windows.h>

std::string textOf(HWND window);

// The windows of models, the active one first.
std::vector<HWND> childrenOf(HWND frame);

using HostAction = void (*)(HWND frame);

// Runs the host in this process. What happens to it and to its models is printed, and `action` is
// called with its frame once the models are there.
int runHostHere(int argc, char** argv, HostAction action);

// Carries out a command of the frame of this process.
void command(HWND frame, int id);

// What such a process printed once the models were there. Fails the test when that never came, or
// when the process failed.
std::string printedBehindStart(const ChildResult& result);

// Leaves a command to the frame of any process.
void post(HWND frame, int id);

// For what another program does, of which no event tells: until it is so, or half a minute.
template <typename Condition>
void waitUntil(Condition isMet) {
    for (int i = 0; i < 1500 && !isMet(); ++i) ::Sleep(20);
}

// A window of that class that the program shows; null when none comes.
HWND waitForWindow(const RunningProgram& program, const char* windowClass);
HWND waitForFrame(const RunningProgram& program);

// The host as a program of its own with a user who presses OK in every box.
struct AnsweredHost {
    AnsweredHost(const TempDir& dir, const std::vector<std::string>& arguments);

    // The box behind that of the last call; an empty one, and a failure, when none comes.
    SeenBox nextBox();
    ChildResult close();  // once

    RunningProgram program;
    const BoxWatcher watcher;
    const HWND frame;

private:
    std::size_t m_boxes = 0;
};
