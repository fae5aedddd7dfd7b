// A general plug-in: while it is loaded, trace lines (-trace) tell what happens to models.

#include "zbasic/zevent.h"
#include "zbasic/zplugin_api.h"
#include "zbasic/ztrace.h"

namespace {

class Watch : public ZelEventListener {
public:
    Watch() {
        for (const ZelEventType type :
             {ZelEvent_OpenModel, ZelEvent_SaveModel, ZelEvent_AfterAppInitialized}) {
            setEventHandler(type, static_cast<Handler>(&Watch::tell), 0);
        }
    }

private:
    void tell(ZelEvent* event) {
        ++m_count;
        Zel_Trace("eventwatch: %d. %s", m_count, event->getEventName());
    }

    int m_count = 0;
};

// Made when the plug-in is loaded, gone when it is unloaded: the library forgets it then.
const Watch g_watch;

}  // namespace

ZEL_GENERAL_PLUGIN()
