#include "zbasic/zevent.h"

#include <iterator>

#include "app/zeventdispatcher.h"

namespace {

const char* const kUserActions[] = {
    "AfterCreate",
    "BeforeSemiDelete",
    "AfterSemiDelete",
    "BeforeWakeUp",
    "AfterWakeUp",
    "BeforeDelete",
    "AfterDelete",
    "BeforeSetPermission",
    "AfterSetPermission",
    "BeforeUnsetPermission",
    "AfterUnsetPermission",
    "BeforeSetComment",
    "AfterSetComment",
    "BeforeRename",
    "AfterRename",
    "AfterSetSubAdmin",
    "AfterUnsetSubAdmin",
    "AfterSetSubAdminUserMgt",
    "AfterUnsetSubAdminUserMgt",
    "BeforeSetComponents",
    "AfterSetComponents",
    "AfterSetPassword",
};
static_assert(std::size(kUserActions) == ZelUserEvent::AfterSetPassword + 1);

const char* const kUserGroupActions[] = {
    "AfterCreate",      "BeforeDelete",    "AfterDelete",  "BeforeAddUser", "AfterAddUser",
    "BeforeRemoveUser", "AfterRemoveUser", "BeforeRename", "AfterRename",
};
static_assert(std::size(kUserGroupActions) == ZelUserGroupEvent::AfterRename + 1);

template <std::size_t count>
SV::String nameOf(const char* const (&names)[count], std::int32_t action) {
    const auto index = static_cast<std::uint32_t>(action);
    return index < count ? names[index] : "";
}

}  // namespace

void ZelEvent::trigger() { ZelEventDispatcher::dispatch(*this); }

ZelUserEvent::ZelUserEvent(ActionType action, long id)
    : ZelUserEvent(action, id, -1, ZelDBPermission{}) {}

ZelUserEvent::ZelUserEvent(ActionType action, long id, long permissionType,
                           ZelDBPermission dbPermission)
    : ZelEvent(ZelEvent_User),
      m_action(action),
      m_id(id),
      m_permissionType(permissionType),
      m_dbPermission(dbPermission) {}

ZelUserEvent::~ZelUserEvent() = default;

SV::String ZelUserEvent::GetActionName() const { return nameOf(kUserActions, m_action); }

ZelUserGroupEvent::ZelUserGroupEvent(ActionType action, long groupId)
    : ZelUserGroupEvent(action, groupId, -1) {}

ZelUserGroupEvent::ZelUserGroupEvent(ActionType action, long groupId, long userId)
    : ZelEvent(ZelEvent_UserGroup), m_action(action), m_groupId(groupId), m_userId(userId) {}

ZelUserGroupEvent::~ZelUserGroupEvent() = default;

SV::String ZelUserGroupEvent::GetActionName() const { return nameOf(kUserGroupActions, m_action); }

ZelExitAppEvent::ZelExitAppEvent(const SV::String& reason)
    : ZelEvent(ZelEvent_AppExit), m_reason(reason) {}
ZelExitAppEvent::~ZelExitAppEvent() = default;

ZelAppChangeStartupPhaseEvent::ZelAppChangeStartupPhaseEvent(const SV::String& text)
    : ZelEvent(ZelEvent_AppChangeStartupPhase), m_text(text) {}
ZelAppChangeStartupPhaseEvent::~ZelAppChangeStartupPhaseEvent() = default;

ZelSystemSettingsChangedEvent::ZelSystemSettingsChangedEvent(SV::SysChangeType change)
    : ZelEvent(ZelEvent_SystemSettingsChanged), m_change(change) {}
ZelSystemSettingsChangedEvent::~ZelSystemSettingsChangedEvent() = default;

ZelWindowStackChangedEvent::ZelWindowStackChangedEvent(long number, bool isAdded,
                                                       const SV::String& text)
    : ZelEvent(ZelEvent_ZelWindowStackChanged),
      m_number(number),
      m_isAdded(isAdded),
      m_text(text) {}
ZelWindowStackChangedEvent::~ZelWindowStackChangedEvent() = default;

ZelBeforeGrabFocusEvent::ZelBeforeGrabFocusEvent() : ZelEvent(ZelEvent_BeforeGrabFocus) {}
ZelBeforeGrabFocusEvent::~ZelBeforeGrabFocusEvent() = default;

ZelEventListener::ZelEventListener() = default;
ZelEventListener::ZelEventListener(const ZelEventListener&) {}
ZelEventListener& ZelEventListener::operator=(const ZelEventListener&) { return *this; }
ZelEventListener::~ZelEventListener() { manualSignOff(); }

void ZelEventListener::setEventHandler(ZelEventType type, Handler handler,
                                       ZelEventPriority priority) {
    if (!handler) return;
    if (ZelEventDispatcher* dispatcher = ZelEventDispatcher::instance()) {
        dispatcher->add(type, this, handler, priority);
    }
}

void ZelEventListener::manualSignOff() {
    if (ZelEventDispatcher* dispatcher = ZelEventDispatcher::current()) dispatcher->remove(this);
}

void ZelEventListener::check() const {}
