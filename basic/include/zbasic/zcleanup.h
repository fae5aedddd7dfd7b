// Work that is done when the program ends.

#pragma once

#include <list>
#include <memory>
#include <unordered_map>

#include "sv/string.h"
#include "zbasic/zevent.h"
#include "zbasic/zexport.h"

// One piece of such work.
class ZBASIC_API ZelCleanUpAction {
public:
    ZelCleanUpAction(const ZelCleanUpAction&) = delete;
    ZelCleanUpAction& operator=(const ZelCleanUpAction&) = delete;
    virtual ~ZelCleanUpAction();

    // True when it was done. The collector calls it once and ignores the result.
    virtual bool execute() = 0;

protected:
    ZelCleanUpAction();
};

// Deletes a file; false when it is missing or in use.
class ZBASIC_API ZelFileCleanUpAction : public ZelCleanUpAction {
public:
    // The name is used as it is: make it absolute.
    explicit ZelFileCleanUpAction(const SV::String& fileName);
    ~ZelFileCleanUpAction() override;

    bool execute() override;
    // As given; valid as long as the action.
    const SV::String& GetFileName() const { return m_fileName; }

private:
    SV::String m_fileName;
};

// Deletes an object, which it owns from its construction on. A null pointer, and
// a second `execute`, do nothing; the result is always true.
template <class T>
class ZelSingletonDeleteAction : public ZelCleanUpAction {
public:
    // Takes over what was made by `new`.
    explicit ZelSingletonDeleteAction(T* instance) : m_instance(instance) {}

    bool execute() override {
        m_instance.reset();
        return true;
    }

private:
    std::unique_ptr<T> m_instance;
};

// Collects such work during the run. Everything collected is done when "AppExit"
// is triggered, and what came after that when the collector itself is destroyed
// at process exit; each action is executed once and then deleted.
//
// At process exit means: while the system detaches this library. The program's
// static objects are gone by then, other threads were ended wherever they stood,
// and plug-in libraries may be unloaded. An action that needs any of them, or has
// its code there, must be done by "AppExit": see that one is triggered after it
// was added.
//
// Relied on by callers: first registered, first run. Singletons are therefore
// destroyed in the order of their creation.
// An action that is added while others run is executed in the same pass.
//
// Threads: several may make the first call of `Instance` at a time, but not while
// the main thread registers for events or triggers them, for the collector itself
// registers. Later calls by any; everything else on the main thread.
class ZBASIC_API ZelCleanUp : public ZelEventListener {
public:
    // The one of the process: made on first use.
    static ZelCleanUp& Instance();

    ZelCleanUp(const ZelCleanUp&) = delete;
    ZelCleanUp& operator=(const ZelCleanUp&) = delete;
    ~ZelCleanUp() override;

    // The collector owns `action` from now on; null is passed over.
    void AddAction(ZelCleanUpAction* action);

    // A file to be deleted. The name is used as it is: make it absolute, for the
    // current directory may be another one by then.
    void AddFileCleanUpAction(const SV::String& fileName);
    // Takes back the first registration of exactly that name, if there is one.
    // Relied on by callers: further ones of the same name stay.
    void RemoveFileCleanUpAction(const SV::String& fileName);

protected:
    // The handler of "AppExit": does everything collected. The event is not looked at.
    void _onExit(ZelEvent* event);

private:
    using Actions = std::list<std::unique_ptr<ZelCleanUpAction>>;

    ZelCleanUp();
    void forgetFirst(const SV::String& fileName);

    Actions m_actions;
    // Where the files of a name stand, in their order: temporary names come by the thousand.
    std::unordered_map<SV::String, std::list<Actions::iterator>> m_files;
};
