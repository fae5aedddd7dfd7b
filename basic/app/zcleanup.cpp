#include "zbasic/zcleanup.h"

#include <algorithm>
#include <cstdio>
#include <utility>

ZelCleanUpAction::ZelCleanUpAction() = default;
ZelCleanUpAction::~ZelCleanUpAction() = default;

ZelFileCleanUpAction::ZelFileCleanUpAction(const SV::String& fileName) : m_fileName(fileName) {}
ZelFileCleanUpAction::~ZelFileCleanUpAction() = default;

bool ZelFileCleanUpAction::execute() { return std::remove(m_fileName.c_str()) == 0; }

ZelCleanUp& ZelCleanUp::Instance() {
    static ZelCleanUp collector;
    return collector;
}

// Registering makes the dispatcher before this object is complete, so that at
// process exit the dispatcher is destroyed after it.
ZelCleanUp::ZelCleanUp() {
    setEventHandler(ZelEvent_AppExit, static_cast<Handler>(&ZelCleanUp::_onExit), 0);
}

ZelCleanUp::~ZelCleanUp() { _onExit(nullptr); }

void ZelCleanUp::AddAction(ZelCleanUpAction* action) {
    if (action) m_actions.emplace_back(action);
}

void ZelCleanUp::AddFileCleanUpAction(const SV::String& fileName) {
    m_actions.push_back(std::make_unique<ZelFileCleanUpAction>(fileName));
}

void ZelCleanUp::RemoveFileCleanUpAction(const SV::String& fileName) {
    const auto isThatFile = [&fileName](const std::unique_ptr<ZelCleanUpAction>& action) {
        const auto* file = dynamic_cast<const ZelFileCleanUpAction*>(action.get());
        return file && file->GetFileName() == fileName;
    };
    const auto found = std::ranges::find_if(m_actions, isThatFile);
    if (found != m_actions.end()) m_actions.erase(found);
}

// An action leaves the list before it runs: whatever it does to the list, or by
// triggering the event again, cannot run it a second time.
void ZelCleanUp::_onExit(ZelEvent*) {
    while (!m_actions.empty()) {
        const std::unique_ptr<ZelCleanUpAction> action = std::move(m_actions.front());
        m_actions.pop_front();
        action->execute();
    }
}
