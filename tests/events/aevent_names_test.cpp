#include "aevent_names.hpp"

#include "frame/box_watch.hpp"
#include "frame/recording_application.hpp"

#include <gtest/gtest.h>

#include <iterator>
#include <ostream>
#include <string>

namespace {

constexpr int kFirst = 700;

/// All names, ten in a group: the first group is 700 to 709.
char const * const kNames[] = {
    "__FIRST__",
    "User",
    "UserGroup",
    "BeforeCreateModel",
    "CreateModel",
    "WhileLoadingModel",
    "OpenModel",
    "BeforeSaveModel",
    "SaveModel",
    "BeforeDiscardModel",
    "DiscardModel",
    "BeforeDeleteModel",
    "DeleteModel",
    "RenameModelThread",
    "SetModelVersion",
    "DeleteModelThread",
    "CreateMGroup",
    "RenameMGroup",
    "BeforeMoveMGroup",
    "MoveMGroup",
    "DeleteMGroup",
    "BeforeCreateModelRef",
    "CreateModelRef",
    "MoveModelRef",
    "DeleteModelRef",
    "RenameLibrary",
    "SaveLibrary",
    "CreateClass",
    "DeleteClass",
    "ObjManCreateClass",
    "ObjManDeleteClass",
    "ObjManCreateRelationClass",
    "ObjManDeleteRelationClass",
    "ObjManCreateAttribute",
    "ObjManDeleteAttribute",
    "ObjManCreateInstance",
    "ObjManDeleteInstance",
    "CreateInstance",
    "RenameInstance",
    "BeforeDeleteInstance",
    "CancelDeleteInstance",
    "DeleteInstance",
    "BeforeRemoveObject",
    "BeforeCutObject",
    "BeforeCopyObject",
    "BeforeDiscardInstance",
    "DiscardInstance",
    "BeforeCreateRelationInstance",
    "CreateRelationInstance",
    "DeleteRelationInstance",
    "ChangeRelationInstanceFromEndpoint",
    "ChangeRelationInstanceToEndpoint",
    "DiscardRelationInstance",
    "AfterCreateRecordRow",
    "BeforeDeleteRecordRow",
    "AfterDeleteRecordRow",
    "SetAttributeValue",
    "SetFacetValue",
    "CreateAttrProfHandler",
    "UpdateAttrProfHandler",
    "StartUpdateAttrProfs",
    "EndUpdateAttrProfs",
    "CreateAPVersion",
    "CreateAPThread",
    "BeforeDeleteAPVersions",
    "DeleteAPVersion",
    "RenameAttrProf",
    "CreateApplicationModel",
    "RenameApplicationModel",
    "DeleteApplicationModel",
    "SimulationActive",
    "ShowSim1PathResult",
    "SimulationEnded",
    "StartKDLImport",
    "EndKDLImport",
    "AppInitialized",
    "AppExit",
    "StartUpdateModels",
    "EndUpdateModels",
    "ChangeComponent",
    "PrintModel",
    "BeforeCreateModelWindow",
    "AfterCreateModelWindow",
    "ActivateModelWindow",
    "DeactivateModelWindow",
    "BeforeDiscardModelWindow",
    "AfterDiscardModelWindow",
    "BeforeZoomDrawingArea",
    "AfterZoomDrawingArea",
    "AfterScrollDrawingArea",
    "AfterExpand",
    "AfterShrink",
    "AfterCreateModelingNode",
    "AfterCreateModelingConnector",
    "BeforeExtSetVariant",
    "AfterExtSetVariant",
    "BeforeBuildGrModel",
    "AfterBuildGrModel",
    "AfterUpdateDrawingArea",
    "AfterResizeDrawingArea",
    "AfterUpdateGrObjects",
    "AfterMoveDAObjects",
    "BeforeDeleteDAObjects",
    "AfterDeleteDAObjects",
    "AfterSetVariant",
    "AfterSetViewMode",
    "SetConnectorRepresentation",
    "SetViewModeDisplayMode",
    "SetAccessDisplayMode",
    "SetColorRepresentation",
    "SetDye",
    "AfterThumbUpdate",
    "AfterAutoConnect",
    "UpdateActions",
    "SetModified",
    "MOCTimer",
    "AttributeAccess",
    "SetObjColoring",
    "AfterEditAttributeValue",
    "UserPreference",
    "OCCStart",
    "OCCEnd",
    "OCCCreateClass",
    "OCCDeleteClass",
    "BeforeWSAction",
    "AfterWSAction",
    "StartInitLibraryHandler",
    "EndInitLibraryHandler",
    "InitCardHandler",
    "InitSimMapHandler",
    "InitMTAHandler",
    "CreateDocuShell",
    "DestroyDocuShell",
    "CreateMTAHandler",
    "DestroyMTAHandler",
    "CreateModelType",
    "DeleteModelType",
    "RegExpError",
    "LoadLibrary",
    "DiscardLibrary",
    "AppChangeStartupPhase",
    "BeforeDBConnect",
    "AfterDBConnect",
    "BeforeDBLogin",
    "AfterDBLogin",
    "BeforeDBDisconnect",
    "AfterDBDisconnect",
    "KivUserCacheUpdate",
    "KivWindowStackChanged",
    "SystemSettingsChanged",
    "BeforeGrabFocus",
    "InitChangeCounterAttrHandler",
    "AfterAppInitialized",
    "BeforeEndComparison",
    "__LAST__",
};

struct Row {
  int number;
  char const * name;
};
std::ostream & operator<<(std::ostream & out, Row const & row) { return out << row.number << ' ' << row.name; }

std::vector<Row> rows() {
  std::vector<Row> all;
  for (char const * const name : kNames)
    all.push_back({kFirst + static_cast<int>(all.size()), name});
  return all;
}

/// 0 for what is not the name of an event.
unsigned long indexOf(Row const & row) {
  return row.number == 700 || row.number == 854 ? 0 : static_cast<unsigned long>(row.number - kFirst);
}

TEST(EventCatalogue, HasEachNameAtItsNumber) {
  for (Row const & row : rows())
    EXPECT_STREQ(Kiv_GetEventNames()[row.number - kFirst], row.name) << row;
}

TEST(EventCatalogue, FindsEachEventAndNoSentinelByItsName) {
  for (Row const & row : rows()) {
    EXPECT_EQ(Kiv_GetEventTypeOfName(row.name), indexOf(row) != 0 ? row.number : 854) << row;
    EXPECT_EQ(Kiv_GetEventIndexOfName(row.name), indexOf(row)) << row;
  }
}

TEST(EventCatalogue, CountsBothSentinels) {
  EXPECT_EQ(std::size(kNames), 155u);
  EXPECT_EQ(Kiv_GetEventCount(), 155u);
  EXPECT_EQ(KIV_EVENT_FIRST, 700);
  EXPECT_EQ(KIV_EVENT_LAST, 854);
}

TEST(EventCatalogue, HasUserAtIndex1) {
  EXPECT_EQ(Kiv_GetEventIndexOfName("User"), 1u);
  EXPECT_STREQ(Kiv_GetEventNames()[1], "User");
}

TEST(EventCatalogue, EnumeratorsHaveTheNumbersOfTheirNames) {
  EXPECT_EQ(KIV_EVENT_User, 701);
  EXPECT_EQ(KIV_EVENT_AppExit, 776);
  EXPECT_EQ(KIV_EVENT_AfterExpand, 790);
  EXPECT_EQ(KIV_EVENT_BeforeEndComparison, 853);
#define KIV_EVENT(name) EXPECT_STREQ(Kiv_GetEventNames()[KIV_EVENT_##name - KIV_EVENT_FIRST], #name);
#include "detail/aevent_types.inc"
}

struct UnknownName {
  char const * name;
};
std::ostream & operator<<(std::ostream & out, UnknownName const & row) { return out << (row.name ? row.name : "null"); }

class UnknownEventName : public testing::TestWithParam<UnknownName> {};
TEST_P(UnknownEventName, Is854AndIndex0) {
  EXPECT_EQ(Kiv_GetEventTypeOfName(GetParam().name), KIV_EVENT_LAST);
  EXPECT_EQ(Kiv_GetEventIndexOfName(GetParam().name), 0u);
}
INSTANTIATE_TEST_SUITE_P(Names, UnknownEventName,
                         testing::Values(UnknownName{nullptr}, UnknownName{""}, UnknownName{"__FIRST__"},
                                         UnknownName{"__LAST__"}, UnknownName{"appexit"}, UnknownName{"AppExit "},
                                         UnknownName{"AppExi"}, UnknownName{"Use"}, UnknownName{"Users"},
                                         UnknownName{"776"}));

TEST(EventCatalogue, FindsANameUpToItsTerminatingZero) {
  EXPECT_EQ(Kiv_GetEventTypeOfName("AppExit\0 and more"), KIV_EVENT_AppExit);
}

TEST(EventCatalogue, HasNoNameTwice) {
  kivtest::RecordingApplication const application;
  kivtest::BoxWatch const watch;
  Kiv_CheckEventNames();
  EXPECT_TRUE(watch.boxes().empty());
}

TEST(EventCatalogue, ANameThatStandsTwiceIsAnInternalErrorForEachPair) {
  kivtest::RecordingApplication const application;
  kivtest::BoxWatch const watch;
  std::string const copy = Kiv_GetEventNames()[2];
  Kiv_GetEventNames()[150] = copy.c_str(); // another address with the same bytes
  Kiv_GetEventNames()[154] = copy.c_str();
  Kiv_CheckEventNames();
  ASSERT_EQ(watch.boxes().size(), 3u);
  for (kivtest::SeenBox const & box : watch.boxes())
    EXPECT_NE(box.text.find("aevent-246 ["), std::string::npos) << box.text;
}

/// Two places of the table.
struct NamePair {
  unsigned long first;
  unsigned long second;
};
std::ostream & operator<<(std::ostream & out, NamePair const & pair) {
  return out << pair.first << " and " << pair.second;
}

class SameEventName : public testing::TestWithParam<NamePair> {};
TEST_P(SameEventName, IsFoundWhereverThePairStands) {
  kivtest::RecordingApplication const application;
  kivtest::BoxWatch const watch;
  Kiv_GetEventNames()[GetParam().second] = Kiv_GetEventNames()[GetParam().first];
  Kiv_CheckEventNames();
  EXPECT_EQ(watch.boxes().size(), 1u);
}
INSTANTIATE_TEST_SUITE_P(Pairs, SameEventName,
                         testing::Values(NamePair{0, 1}, NamePair{0, 80}, NamePair{0, 154}, NamePair{1, 2},
                                         NamePair{153, 154}));

} // namespace
