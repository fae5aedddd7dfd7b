#include "zbasic/zcleanup.h"

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

// All memory is taken before anything is changed: the action is ours to delete whatever happens,
// and a file that is among the actions is found by its name.
void ZelCleanUp::AddAction(ZelCleanUpAction* action) {
    if (!action) return;
    std::unique_ptr<ZelCleanUpAction> owner(action);
    Actions added;
    added.push_back(std::move(owner));
    if (const auto* const file = dynamic_cast<const ZelFileCleanUpAction*>(action)) {
        std::list<Actions::iterator> place(1, added.begin());
        std::list<Actions::iterator>& places = m_files[file->GetFileName()];
        places.splice(places.end(), place);
    }
    m_actions.splice(m_actions.end(), added);
}

void ZelCleanUp::AddFileCleanUpAction(const SV::String& fileName) {
    AddAction(std::make_unique<ZelFileCleanUpAction>(fileName).release());
}

void ZelCleanUp::RemoveFileCleanUpAction(const SV::String& fileName) {
    const auto found = m_files.find(fileName);
    if (found == m_files.end()) return;
    // Its name may be `fileName` itself, and what it does when it goes is its own affair.
    const Actions::iterator place = found->second.front();
    const std::unique_ptr<ZelCleanUpAction> action = std::move(*place);
    m_actions.erase(place);
    forgetFirst(fileName);
}

// The first one of that name has left the list.
void ZelCleanUp::forgetFirst(const SV::String& fileName) {
    const auto found = m_files.find(fileName);
    found->second.pop_front();
    if (found->second.empty()) m_files.erase(found);
}

// An action leaves the list before it runs: whatever it does to the list, or by
// triggering the event again, cannot run it a second time.
void ZelCleanUp::_onExit(ZelEvent*) {
    while (!m_actions.empty()) {
        const std::unique_ptr<ZelCleanUpAction> action = std::move(m_actions.front());
        m_actions.pop_front();
        const auto* const file = dynamic_cast<const ZelFileCleanUpAction*>(action.get());
        if (file) forgetFirst(file->GetFileName());
        action->execute();
    }
}
