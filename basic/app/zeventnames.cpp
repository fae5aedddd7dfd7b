// The names of the event types.

#include <array>
#include <string_view>

#include "zbasic/zevent.h"

namespace {

constexpr std::size_t kCount = ZelEvent_Last - ZelEvent_First + 1;

struct TypeName {
    ZelEventType type;
    std::string_view name;  // of a literal, so its data ends in a NUL
};

#define ZBASIC_EVENT(name) \
    { ZelEvent_##name, #name }

constexpr TypeName kTypeNames[kCount] = {
    {ZelEvent_First, "__FIRST__"},
    ZBASIC_EVENT(User),
    ZBASIC_EVENT(UserGroup),
    ZBASIC_EVENT(BeforeCreateModel),
    ZBASIC_EVENT(CreateModel),
    ZBASIC_EVENT(WhileLoadingModel),
    ZBASIC_EVENT(OpenModel),
    ZBASIC_EVENT(BeforeSaveModel),
    ZBASIC_EVENT(SaveModel),
    ZBASIC_EVENT(BeforeDiscardModel),
    ZBASIC_EVENT(DiscardModel),
    ZBASIC_EVENT(BeforeDeleteModel),
    ZBASIC_EVENT(DeleteModel),
    ZBASIC_EVENT(RenameModelThread),
    ZBASIC_EVENT(SetModelVersion),
    ZBASIC_EVENT(DeleteModelThread),
    ZBASIC_EVENT(CreateMGroup),
    ZBASIC_EVENT(RenameMGroup),
    ZBASIC_EVENT(BeforeMoveMGroup),
    ZBASIC_EVENT(MoveMGroup),
    ZBASIC_EVENT(DeleteMGroup),
    ZBASIC_EVENT(BeforeCreateModelRef),
    ZBASIC_EVENT(CreateModelRef),
    ZBASIC_EVENT(MoveModelRef),
    ZBASIC_EVENT(DeleteModelRef),
    ZBASIC_EVENT(RenameLibrary),
    ZBASIC_EVENT(SaveLibrary),
    ZBASIC_EVENT(CreateClass),
    ZBASIC_EVENT(DeleteClass),
    ZBASIC_EVENT(ObjManCreateClass),
    ZBASIC_EVENT(ObjManDeleteClass),
    ZBASIC_EVENT(ObjManCreateRelationClass),
    ZBASIC_EVENT(ObjManDeleteRelationClass),
    ZBASIC_EVENT(ObjManCreateAttribute),
    ZBASIC_EVENT(ObjManDeleteAttribute),
    ZBASIC_EVENT(ObjManCreateInstance),
    ZBASIC_EVENT(ObjManDeleteInstance),
    ZBASIC_EVENT(CreateInstance),
    ZBASIC_EVENT(RenameInstance),
    ZBASIC_EVENT(BeforeDeleteInstance),
    ZBASIC_EVENT(CancelDeleteInstance),
    ZBASIC_EVENT(DeleteInstance),
    ZBASIC_EVENT(BeforeRemoveObject),
    ZBASIC_EVENT(BeforeCutObject),
    ZBASIC_EVENT(BeforeCopyObject),
    ZBASIC_EVENT(BeforeDiscardInstance),
    ZBASIC_EVENT(DiscardInstance),
    ZBASIC_EVENT(BeforeCreateRelationInstance),
    ZBASIC_EVENT(CreateRelationInstance),
    ZBASIC_EVENT(DeleteRelationInstance),
    ZBASIC_EVENT(ChangeRelationInstanceFromEndpoint),
    ZBASIC_EVENT(ChangeRelationInstanceToEndpoint),
    ZBASIC_EVENT(DiscardRelationInstance),
    ZBASIC_EVENT(AfterCreateRecordRow),
    ZBASIC_EVENT(BeforeDeleteRecordRow),
    ZBASIC_EVENT(AfterDeleteRecordRow),
    ZBASIC_EVENT(SetAttributeValue),
    ZBASIC_EVENT(SetFacetValue),
    ZBASIC_EVENT(CreateAttrProfHandler),
    ZBASIC_EVENT(UpdateAttrProfHandler),
    ZBASIC_EVENT(StartUpdateAttrProfs),
    ZBASIC_EVENT(EndUpdateAttrProfs),
    ZBASIC_EVENT(CreateAPVersion),
    ZBASIC_EVENT(CreateAPThread),
    ZBASIC_EVENT(BeforeDeleteAPVersions),
    ZBASIC_EVENT(DeleteAPVersion),
    ZBASIC_EVENT(RenameAttrProf),
    ZBASIC_EVENT(CreateApplicationModel),
    ZBASIC_EVENT(RenameApplicationModel),
    ZBASIC_EVENT(DeleteApplicationModel),
    ZBASIC_EVENT(SimulationActive),
    ZBASIC_EVENT(ShowSim1PathResult),
    ZBASIC_EVENT(SimulationEnded),
    ZBASIC_EVENT(StartVKLImport),
    ZBASIC_EVENT(EndVKLImport),
    ZBASIC_EVENT(AppInitialized),
    ZBASIC_EVENT(AppExit),
    ZBASIC_EVENT(AppReload),
    ZBASIC_EVENT(StartUpdateModels),
    ZBASIC_EVENT(EndUpdateModels),
    ZBASIC_EVENT(ChangeComponent),
    ZBASIC_EVENT(PrintModel),
    ZBASIC_EVENT(BeforeCreateModelWindow),
    ZBASIC_EVENT(AfterCreateModelWindow),
    ZBASIC_EVENT(ActivateModelWindow),
    ZBASIC_EVENT(DeactivateModelWindow),
    ZBASIC_EVENT(BeforeDiscardModelWindow),
    ZBASIC_EVENT(AfterDiscardModelWindow),
    ZBASIC_EVENT(BeforeZoomDrawingArea),
    ZBASIC_EVENT(AfterZoomDrawingArea),
    ZBASIC_EVENT(AfterScrollDrawingArea),
    ZBASIC_EVENT(AfterExpand),
    ZBASIC_EVENT(AfterShrink),
    ZBASIC_EVENT(AfterCreateModelingNode),
    ZBASIC_EVENT(AfterCreateModelingConnector),
    ZBASIC_EVENT(BeforeExtSetVariant),
    ZBASIC_EVENT(AfterExtSetVariant),
    ZBASIC_EVENT(BeforeBuildGrModel),
    ZBASIC_EVENT(AfterBuildGrModel),
    ZBASIC_EVENT(AfterUpdateDrawingArea),
    ZBASIC_EVENT(AfterResizeDrawingArea),
    ZBASIC_EVENT(AfterUpdateGrObjects),
    ZBASIC_EVENT(AfterMoveDAObjects),
    ZBASIC_EVENT(BeforeDeleteDAObjects),
    ZBASIC_EVENT(AfterDeleteDAObjects),
    ZBASIC_EVENT(AfterSetVariant),
    ZBASIC_EVENT(AfterSetViewMode),
    ZBASIC_EVENT(SetConnectorRepresentation),
    ZBASIC_EVENT(SetViewModeDisplayMode),
    ZBASIC_EVENT(SetAccessDisplayMode),
    ZBASIC_EVENT(SetColorRepresentation),
    ZBASIC_EVENT(SetDye),
    ZBASIC_EVENT(AfterThumbUpdate),
    ZBASIC_EVENT(AfterAutoConnect),
    ZBASIC_EVENT(UpdateActions),
    ZBASIC_EVENT(SetModified),
    ZBASIC_EVENT(MOCTimer),
    ZBASIC_EVENT(AttributeAccess),
    ZBASIC_EVENT(SetObjColoring),
    ZBASIC_EVENT(AfterEditAttributeValue),
    ZBASIC_EVENT(UserPreference),
    ZBASIC_EVENT(OCCStart),
    ZBASIC_EVENT(OCCEnd),
    ZBASIC_EVENT(OCCCreateClass),
    ZBASIC_EVENT(OCCDeleteClass),
    ZBASIC_EVENT(BeforeWSAction),
    ZBASIC_EVENT(AfterWSAction),
    ZBASIC_EVENT(StartInitLibraryHandler),
    ZBASIC_EVENT(EndInitLibraryHandler),
    ZBASIC_EVENT(InitCardHandler),
    ZBASIC_EVENT(InitSimMapHandler),
    ZBASIC_EVENT(InitMTAHandler),
    ZBASIC_EVENT(CreateDocuShell),
    ZBASIC_EVENT(DestroyDocuShell),
    ZBASIC_EVENT(CreateMTAHandler),
    ZBASIC_EVENT(DestroyMTAHandler),
    ZBASIC_EVENT(CreateModelType),
    ZBASIC_EVENT(DeleteModelType),
    ZBASIC_EVENT(RegExpError),
    ZBASIC_EVENT(LoadLibrary),
    ZBASIC_EVENT(DiscardLibrary),
    ZBASIC_EVENT(AppChangeStartupPhase),
    ZBASIC_EVENT(BeforeDBConnect),
    ZBASIC_EVENT(AfterDBConnect),
    ZBASIC_EVENT(BeforeDBLogin),
    ZBASIC_EVENT(AfterDBLogin),
    ZBASIC_EVENT(BeforeDBDisconnect),
    ZBASIC_EVENT(AfterDBDisconnect),
    ZBASIC_EVENT(ZelUserCacheUpdate),
    ZBASIC_EVENT(ZelWindowStackChanged),
    ZBASIC_EVENT(SystemSettingsChanged),
    ZBASIC_EVENT(BeforeGrabFocus),
    ZBASIC_EVENT(InitChangeCounterAttrHandler),
    ZBASIC_EVENT(AfterAppInitialized),
    ZBASIC_EVENT(BeforeEndComparison),
    {ZelEvent_Last, "__LAST__"},
};

#undef ZBASIC_EVENT

consteval bool everyRowIsAtItsType() {
    for (std::size_t i = 0; i < kCount; ++i) {
        if (kTypeNames[i].type != ZelEvent_First + static_cast<int>(i)) return false;
    }
    return true;
}
static_assert(everyRowIsAtItsType());

consteval bool namesAreDistinct() {
    for (std::size_t i = 0; i < kCount; ++i) {
        for (std::size_t j = 0; j < i; ++j) {
            if (kTypeNames[i].name == kTypeNames[j].name) return false;
        }
    }
    return true;
}
static_assert(namesAreDistinct());

consteval std::array<const char*, kCount> namesAlone() {
    std::array<const char*, kCount> names = {};
    for (std::size_t i = 0; i < kCount; ++i) names[i] = kTypeNames[i].name.data();
    return names;
}

constinit std::array<const char*, kCount> g_names = namesAlone();

const char* nameOf(ZelEventType type) {
    const auto index = static_cast<std::size_t>(type - ZelEvent_First);  // huge below the first
    return index < kCount ? g_names[index] : "";
}

}  // namespace

ZelEventData::ZelEventData(ZelEventType type) : m_type(type), m_name(nameOf(type)) {}

const char** Zel_GetEventNames() { return g_names.data(); }

unsigned long Zel_GetEventCount() { return kCount; }

ZelEventType Zel_GetEventTypeOfName(const char* name) {
    const unsigned long index = Zel_GetEventIndexOfName(name);
    return index == 0 ? ZelEvent_Last : static_cast<ZelEventType>(ZelEvent_First + index);
}

unsigned long Zel_GetEventIndexOfName(const char* name) {
    if (!name) return 0;
    for (std::size_t i = 1; i + 1 < kCount; ++i) {
        if (g_names[i] && std::string_view(g_names[i]) == name) {
            return static_cast<unsigned long>(i);
        }
    }
    return 0;
}
