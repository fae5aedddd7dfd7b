// Events: how the parts of a program tell each other what happens.

#pragma once

#include <cstdint>

#include "sv/string.h"
#include "zbasic/zexport.h"

namespace SV {
class Window;
enum class SysChangeType : std::int32_t;  // sv/application.h
}  // namespace SV

class ZelEvent;

// What happens. A type that is not listed here may come by a cast; it works like
// the others and has an empty name.
enum ZelEventType : std::int32_t {
    ZelEvent_First = 700,  // a bound, no event
    ZelEvent_User = 701,
    ZelEvent_UserGroup = 702,
    ZelEvent_BeforeCreateModel = 703,
    ZelEvent_CreateModel = 704,
    ZelEvent_WhileLoadingModel = 705,
    ZelEvent_OpenModel = 706,
    ZelEvent_BeforeSaveModel = 707,
    ZelEvent_SaveModel = 708,
    ZelEvent_BeforeDiscardModel = 709,
    ZelEvent_DiscardModel = 710,
    ZelEvent_BeforeDeleteModel = 711,
    ZelEvent_DeleteModel = 712,
    ZelEvent_RenameModelThread = 713,
    ZelEvent_SetModelVersion = 714,
    ZelEvent_DeleteModelThread = 715,
    ZelEvent_CreateMGroup = 716,
    ZelEvent_RenameMGroup = 717,
    ZelEvent_BeforeMoveMGroup = 718,
    ZelEvent_MoveMGroup = 719,
    ZelEvent_DeleteMGroup = 720,
    ZelEvent_BeforeCreateModelRef = 721,
    ZelEvent_CreateModelRef = 722,
    ZelEvent_MoveModelRef = 723,
    ZelEvent_DeleteModelRef = 724,
    ZelEvent_RenameLibrary = 725,
    ZelEvent_SaveLibrary = 726,
    ZelEvent_CreateClass = 727,
    ZelEvent_DeleteClass = 728,
    ZelEvent_ObjManCreateClass = 729,
    ZelEvent_ObjManDeleteClass = 730,
    ZelEvent_ObjManCreateRelationClass = 731,
    ZelEvent_ObjManDeleteRelationClass = 732,
    ZelEvent_ObjManCreateAttribute = 733,
    ZelEvent_ObjManDeleteAttribute = 734,
    ZelEvent_ObjManCreateInstance = 735,
    ZelEvent_ObjManDeleteInstance = 736,
    ZelEvent_CreateInstance = 737,
    ZelEvent_RenameInstance = 738,
    ZelEvent_BeforeDeleteInstance = 739,
    ZelEvent_CancelDeleteInstance = 740,
    ZelEvent_DeleteInstance = 741,
    ZelEvent_BeforeRemoveObject = 742,
    ZelEvent_BeforeCutObject = 743,
    ZelEvent_BeforeCopyObject = 744,
    ZelEvent_BeforeDiscardInstance = 745,
    ZelEvent_DiscardInstance = 746,
    ZelEvent_BeforeCreateRelationInstance = 747,
    ZelEvent_CreateRelationInstance = 748,
    ZelEvent_DeleteRelationInstance = 749,
    ZelEvent_ChangeRelationInstanceFromEndpoint = 750,
    ZelEvent_ChangeRelationInstanceToEndpoint = 751,
    ZelEvent_DiscardRelationInstance = 752,
    ZelEvent_AfterCreateRecordRow = 753,
    ZelEvent_BeforeDeleteRecordRow = 754,
    ZelEvent_AfterDeleteRecordRow = 755,
    ZelEvent_SetAttributeValue = 756,
    ZelEvent_SetFacetValue = 757,
    ZelEvent_CreateAttrProfHandler = 758,
    ZelEvent_UpdateAttrProfHandler = 759,
    ZelEvent_StartUpdateAttrProfs = 760,
    ZelEvent_EndUpdateAttrProfs = 761,
    ZelEvent_CreateAPVersion = 762,
    ZelEvent_CreateAPThread = 763,
    ZelEvent_BeforeDeleteAPVersions = 764,
    ZelEvent_DeleteAPVersion = 765,
    ZelEvent_RenameAttrProf = 766,
    ZelEvent_CreateApplicationModel = 767,
    ZelEvent_RenameApplicationModel = 768,
    ZelEvent_DeleteApplicationModel = 769,
    ZelEvent_SimulationActive = 770,
    ZelEvent_ShowSim1PathResult = 771,
    ZelEvent_SimulationEnded = 772,
    ZelEvent_StartVKLImport = 773,
    ZelEvent_EndVKLImport = 774,
    ZelEvent_AppInitialized = 775,
    ZelEvent_AppExit = 776,
    ZelEvent_AppReload = 777,
    ZelEvent_StartUpdateModels = 778,
    ZelEvent_EndUpdateModels = 779,
    ZelEvent_ChangeComponent = 780,
    ZelEvent_PrintModel = 781,
    ZelEvent_BeforeCreateModelWindow = 782,
    ZelEvent_AfterCreateModelWindow = 783,
    ZelEvent_ActivateModelWindow = 784,
    ZelEvent_DeactivateModelWindow = 785,
    ZelEvent_BeforeDiscardModelWindow = 786,
    ZelEvent_AfterDiscardModelWindow = 787,
    ZelEvent_BeforeZoomDrawingArea = 788,
    ZelEvent_AfterZoomDrawingArea = 789,
    ZelEvent_AfterScrollDrawingArea = 790,
    ZelEvent_AfterExpand = 791,
    ZelEvent_AfterShrink = 792,
    ZelEvent_AfterCreateModelingNode = 793,
    ZelEvent_AfterCreateModelingConnector = 794,
    ZelEvent_BeforeExtSetVariant = 795,
    ZelEvent_AfterExtSetVariant = 796,
    ZelEvent_BeforeBuildGrModel = 797,
    ZelEvent_AfterBuildGrModel = 798,
    ZelEvent_AfterUpdateDrawingArea = 799,
    ZelEvent_AfterResizeDrawingArea = 800,
    ZelEvent_AfterUpdateGrObjects = 801,
    ZelEvent_AfterMoveDAObjects = 802,
    ZelEvent_BeforeDeleteDAObjects = 803,
    ZelEvent_AfterDeleteDAObjects = 804,
    ZelEvent_AfterSetVariant = 805,
    ZelEvent_AfterSetViewMode = 806,
    ZelEvent_SetConnectorRepresentation = 807,
    ZelEvent_SetViewModeDisplayMode = 808,
    ZelEvent_SetAccessDisplayMode = 809,
    ZelEvent_SetColorRepresentation = 810,
    ZelEvent_SetDye = 811,
    ZelEvent_AfterThumbUpdate = 812,
    ZelEvent_AfterAutoConnect = 813,
    ZelEvent_UpdateActions = 814,
    ZelEvent_SetModified = 815,
    ZelEvent_MOCTimer = 816,
    ZelEvent_AttributeAccess = 817,
    ZelEvent_SetObjColoring = 818,
    ZelEvent_AfterEditAttributeValue = 819,
    ZelEvent_UserPreference = 820,
    ZelEvent_OCCStart = 821,
    ZelEvent_OCCEnd = 822,
    ZelEvent_OCCCreateClass = 823,
    ZelEvent_OCCDeleteClass = 824,
    ZelEvent_BeforeWSAction = 825,
    ZelEvent_AfterWSAction = 826,
    ZelEvent_StartInitLibraryHandler = 827,
    ZelEvent_EndInitLibraryHandler = 828,
    ZelEvent_InitCardHandler = 829,
    ZelEvent_InitSimMapHandler = 830,
    ZelEvent_InitMTAHandler = 831,
    ZelEvent_CreateDocuShell = 832,
    ZelEvent_DestroyDocuShell = 833,
    ZelEvent_CreateMTAHandler = 834,
    ZelEvent_DestroyMTAHandler = 835,
    ZelEvent_CreateModelType = 836,
    ZelEvent_DeleteModelType = 837,
    ZelEvent_RegExpError = 838,
    ZelEvent_LoadLibrary = 839,
    ZelEvent_DiscardLibrary = 840,
    ZelEvent_AppChangeStartupPhase = 841,
    ZelEvent_BeforeDBConnect = 842,
    ZelEvent_AfterDBConnect = 843,
    ZelEvent_BeforeDBLogin = 844,
    ZelEvent_AfterDBLogin = 845,
    ZelEvent_BeforeDBDisconnect = 846,
    ZelEvent_AfterDBDisconnect = 847,
    ZelEvent_ZelUserCacheUpdate = 848,
    ZelEvent_ZelWindowStackChanged = 849,
    ZelEvent_SystemSettingsChanged = 850,
    ZelEvent_BeforeGrabFocus = 851,
    ZelEvent_InitChangeCounterAttrHandler = 852,
    ZelEvent_AfterAppInitialized = 853,
    ZelEvent_BeforeEndComparison = 854,
    ZelEvent_Last = 855,  // a bound, no event
};

// Handlers of higher priority are called first. The library uses 0 and 600.
using ZelEventPriority = std::int32_t;

// The number is the caller's: this library only stores it.
enum ZelDBPermission : std::int32_t {};

// What every event carries.
class ZBASIC_API ZelEventData {
public:
    // Takes the name that the table has now.
    explicit ZelEventData(ZelEventType type);
    virtual ~ZelEventData() = default;

    // As given to the constructor, listed or not.
    ZelEventType getEventType() const { return m_type; }
    // The entry of `Zel_GetEventNames` when the event was made.
    const char* getEventName() const { return m_name; }

private:
    ZelEventType m_type;
    const char* m_name;
};

// One happening: usually made on the stack, triggered once, then asked for the
// answer of the handlers.
class ZBASIC_API ZelEvent : public ZelEventData {
public:
    ~ZelEvent() override = default;

    // 0 until a handler sets it. The last handler that sets it wins.
    long getResultValue() const { return m_result; }
    void setResultValue(long result) { m_result = result; }

    // Calls every handler of the event's type, here and now, on the caller's
    // thread: by descending priority, and among equal priorities the newest
    // registration first.
    // Relied on by callers: the newest of equal priority comes first.
    //
    // Handlers may trigger events (of this type too), register, sign off and
    // destroy listeners. A listener that is gone is not called any more; a handler
    // that is registered meanwhile is first called by the next trigger. What a
    // handler throws reaches the caller, and the remaining handlers are left out.
    //
    // Does nothing once the library is being torn down at process exit.
    void trigger();

protected:
    // For derived classes, which bring what is to be known about the happening.
    explicit ZelEvent(ZelEventType type) : ZelEventData(type) {}

private:
    long m_result = 0;
};

// Something is done to a user.
class ZBASIC_API ZelUserEvent : public ZelEvent {
public:
    // What is about to be done to the user (Before), or has been (After).
    enum ActionType : std::int32_t {
        AfterCreate,
        BeforeSemiDelete,
        AfterSemiDelete,
        BeforeWakeUp,
        AfterWakeUp,
        BeforeDelete,
        AfterDelete,
        BeforeSetPermission,
        AfterSetPermission,
        BeforeUnsetPermission,
        AfterUnsetPermission,
        BeforeSetComment,
        AfterSetComment,
        BeforeRename,
        AfterRename,
        AfterSetSubAdmin,
        AfterUnsetSubAdmin,
        AfterSetSubAdminUserMgt,
        AfterUnsetSubAdminUserMgt,
        BeforeSetComponents,
        AfterSetComponents,
        AfterSetPassword,
    };

    // An event of type `ZelEvent_User`. The numbers are the program's: this library only carries
    // them.
    ZelUserEvent(ActionType action, long id);
    ZelUserEvent(ActionType action, long id, long permissionType, ZelDBPermission dbPermission);
    ~ZelUserEvent() override;

    // As given to the constructor.
    ActionType GetActionType() const { return m_action; }
    long GetID() const { return m_id; }
    long GetPermissionType() const { return m_permissionType; }         // -1 unless given
    ZelDBPermission GetDBPermission() const { return m_dbPermission; }  // 0 unless given

    // The enumerator as text ("AfterCreate"); empty for a number without one.
    SV::String GetActionName() const;

private:
    ActionType m_action;
    long m_id;
    long m_permissionType;
    ZelDBPermission m_dbPermission;
};

// Something is done to a user group.
class ZBASIC_API ZelUserGroupEvent : public ZelEvent {
public:
    // What is about to be done to the group (Before), or has been (After).
    enum ActionType : std::int32_t {
        AfterCreate,
        BeforeDelete,
        AfterDelete,
        BeforeAddUser,
        AfterAddUser,
        BeforeRemoveUser,
        AfterRemoveUser,
        BeforeRename,
        AfterRename,
    };

    // An event of type `ZelEvent_UserGroup`. The ids are the program's: this library only carries
    // them.
    ZelUserGroupEvent(ActionType action, long groupId);
    ZelUserGroupEvent(ActionType action, long groupId, long userId);
    ~ZelUserGroupEvent() override;

    // As given to the constructor.
    ActionType GetActionType() const { return m_action; }
    long GetUserGroupID() const { return m_groupId; }
    long GetUserID() const { return m_userId; }  // -1 unless given

    // The enumerator as text; empty for a number without one.
    SV::String GetActionName() const;

private:
    ActionType m_action;
    long m_groupId;
    long m_userId;
};

// The program ends: by its normal way, by a fatal fault or, with the dynamic
// console, because the user logs off or the system shuts down.
class ZBASIC_API ZelExitAppEvent : public ZelEvent {
public:
    // An event of type `ZelEvent_AppExit`. The library's own reasons are "end(<status>)",
    // "exception (minidump)" and "console".
    explicit ZelExitAppEvent(const SV::String& reason);
    ~ZelExitAppEvent() override;

    // For logs; valid as long as the event.
    const SV::String& GetReason() const { return m_reason; }

private:
    SV::String m_reason;
};

// The start-up has come to another phase, which the text describes. Programs
// trigger this class or one derived from it; the library only echoes the text to
// the dynamic console, which shows nothing for another class of the same type.
class ZBASIC_API ZelAppChangeStartupPhaseEvent : public ZelEvent {
public:
    // An event of type `ZelEvent_AppChangeStartupPhase`.
    explicit ZelAppChangeStartupPhaseEvent(const SV::String& text);
    ~ZelAppChangeStartupPhaseEvent() override;

    // For the user; valid as long as the event.
    const SV::String& GetText() const { return m_text; }

private:
    SV::String m_text;
};

// Colours, fonts, the screen or the visual style of the system have changed.
class ZBASIC_API ZelSystemSettingsChangedEvent : public ZelEvent {
public:
    // An event of type `ZelEvent_SystemSettingsChanged`.
    explicit ZelSystemSettingsChangedEvent(SV::SysChangeType change);
    ~ZelSystemSettingsChangedEvent() override;

    // Which of them; numbers without an enumerator come as they are.
    SV::SysChangeType GetChangeType() const { return m_change; }

private:
    SV::SysChangeType m_change;
};

// A window was pushed on the stack of parent windows, or taken off it.
class ZBASIC_API ZelWindowStackChangedEvent : public ZelEvent {
public:
    // An event of type `ZelEvent_ZelWindowStackChanged`. `number` is the depth of the stack and
    // `text` the title of the window.
    ZelWindowStackChangedEvent(long number, bool isAdded, const SV::String& text);
    ~ZelWindowStackChangedEvent() override;

    // As given to the constructor.
    long GetNumber() const { return m_number; }
    bool IsAdded() const { return m_isAdded; }
    const SV::String& GetText() const { return m_text; }

private:
    long m_number;
    bool m_isAdded;
    SV::String m_text;
};

// Asks whether a window may take the focus: any other result than 0 says no.
class ZBASIC_API ZelBeforeGrabFocusEvent : public ZelEvent {
public:
    ZelBeforeGrabFocusEvent();
    ~ZelBeforeGrabFocusEvent() override;

    // Asks, and gives `window` the focus unless a handler objects. True when the
    // window was told to take it; null never is. It must outlive the handlers: one
    // that destroys it has to object.
    static bool GrabFocus(SV::Window* window);
};

// Base of everything that receives events.
//
// Ownership: nobody but its owner; destroying it removes all its registrations.
// A copy starts without any, and assignment leaves both sides' as they are.
// Threads: main thread only, like every operation on events. So is the end of a
// listener, registered or not: it looks into what is registered.
class ZBASIC_API ZelEventListener {
public:
    // Callers convert: `static_cast<ZelEventListener::Handler>(&Mine::onExit)`.
    using Handler = void (ZelEventListener::*)(ZelEvent*);

    ZelEventListener();
    // Take over nothing, as said above.
    ZelEventListener(const ZelEventListener&);
    ZelEventListener& operator=(const ZelEventListener&);
    virtual ~ZelEventListener();

    // From now on `handler` is called when an event of `type` is triggered. Each
    // call adds a registration, so the same handler may be called more than once.
    // A null handler is passed over, and so is everything once the library is
    // being torn down at process exit.
    void setEventHandler(ZelEventType type, Handler handler, ZelEventPriority priority);

    // Removes every registration of this listener.
    void manualSignOff();

    void check() const;  // for callers' consistency checks; there is nothing to check
};

// The names of the types 700 to 855, type 700 + i at index i. Callers may write
// to the table; what they write must live as long as the library.
ZBASIC_API const char** Zel_GetEventNames();
ZBASIC_API unsigned long Zel_GetEventCount();  // 156, the bounds included

// The type with that name, case-sensitive; `ZelEvent_Last` when there is none or
// `name` is null. The bounds "__FIRST__" and "__LAST__" are never found.
ZBASIC_API ZelEventType Zel_GetEventTypeOfName(const char* name);
// The index of that type in the table; 0 when there is none.
ZBASIC_API unsigned long Zel_GetEventIndexOfName(const char* name);
