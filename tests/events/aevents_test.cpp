#include "aevents.hpp"

#include "events/listeners.hpp"
#include "support/processes/debug_lines.hpp"
#include "sv/window.hpp"
#include "tools/winapi.hpp"

#include <gtest/gtest.h>

#include <iterator>
#include <memory>

using kivtest::Calls;
using SV::String;

namespace {

char const * const kUserActions[] = {
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

char const * const kUserGroupActions[] = {
    "AfterCreate",      "BeforeDelete",    "AfterDelete",  "BeforeAddUser", "AfterAddUser",
    "BeforeRemoveUser", "AfterRemoveUser", "BeforeRename", "AfterRename",
};

TEST(UserEvent, HasTheNameOfEachAction) {
  ASSERT_EQ(std::size(kUserActions), 22u);
  for (int action = 0; action < 22; ++action) {
    KivUserEvent const event(static_cast<KivUserEvent::ActionType>(action), 1);
    EXPECT_EQ(event.GetActionType(), action);
    EXPECT_STREQ(event.GetActionName().c_str(), kUserActions[action]);
  }
}

TEST(UserGroupEvent, HasTheNameOfEachAction) {
  ASSERT_EQ(std::size(kUserGroupActions), 9u);
  for (int action = 0; action < 9; ++action) {
    KivUserGroupEvent const event(static_cast<KivUserGroupEvent::ActionType>(action), 1);
    EXPECT_EQ(event.GetActionType(), action);
    EXPECT_STREQ(event.GetActionName().c_str(), kUserGroupActions[action]);
  }
}

TEST(UserEvent, EnumeratorsAreThePlacesOfTheirNames) {
  EXPECT_EQ(KivUserEvent::AfterCreate, 0);
  EXPECT_EQ(KivUserEvent::BeforeRename, 13);
  EXPECT_EQ(KivUserEvent::AfterSetPassword, 21);
  EXPECT_EQ(KivUserGroupEvent::AfterCreate, 0);
  EXPECT_EQ(KivUserGroupEvent::AfterRename, 8);
}

TEST(UserEvent, AnActionOutsideOfTheTableHasAnEmptyName) {
  for (int const action : {-1, 22, 1 << 30}) {
    EXPECT_EQ(KivUserEvent(static_cast<KivUserEvent::ActionType>(action), 1).GetActionName().Len(), 0) << action;
    EXPECT_EQ(KivUserGroupEvent(static_cast<KivUserGroupEvent::ActionType>(action), 1).GetActionName().Len(), 0);
  }
}

TEST(UserEvent, WithTwoArgumentsHasNoPermissions) {
  KivUserEvent const event(KivUserEvent::BeforeDelete, 17);
  EXPECT_EQ(event.getEventType(), 701);
  EXPECT_STREQ(event.getEventName(), "User");
  EXPECT_EQ(event.GetID(), 17);
  EXPECT_EQ(event.GetPermissionType(), -1);
  EXPECT_EQ(event.GetDBPermission(), 0);
}

TEST(UserEvent, CarriesWhatItWasMadeOf) {
  KivUserEvent const event(KivUserEvent::AfterSetPermission, -5, 3, static_cast<KivDBPermission>(9));
  EXPECT_EQ(event.getEventType(), KIV_EVENT_User);
  EXPECT_EQ(event.GetActionType(), KivUserEvent::AfterSetPermission);
  EXPECT_EQ(event.GetID(), -5);
  EXPECT_EQ(event.GetPermissionType(), 3);
  EXPECT_EQ(event.GetDBPermission(), 9);
}

TEST(UserGroupEvent, WithTwoArgumentsHasNoUser) {
  KivUserGroupEvent const event(KivUserGroupEvent::AfterCreate, 8);
  EXPECT_EQ(event.getEventType(), 702);
  EXPECT_STREQ(event.getEventName(), "UserGroup");
  EXPECT_EQ(event.GetUserGroupID(), 8);
  EXPECT_EQ(event.GetUserID(), -1);
}

TEST(UserGroupEvent, CarriesWhatItWasMadeOf) {
  KivUserGroupEvent const event(KivUserGroupEvent::BeforeAddUser, 8, 21);
  EXPECT_EQ(event.GetActionType(), KivUserGroupEvent::BeforeAddUser);
  EXPECT_EQ(event.GetUserGroupID(), 8);
  EXPECT_EQ(event.GetUserID(), 21);
}

TEST(ExitAppEvent, SharesTheTextOfItsReason) {
  String const reason("end(0)");
  KivExitAppEvent const event(reason);
  EXPECT_EQ(event.getEventType(), 776);
  EXPECT_STREQ(event.getEventName(), "AppExit");
  EXPECT_EQ(event.GetReason().block(), reason.block());
}

TEST(WindowStackChangedEvent, CarriesWhatItWasMadeOf) {
  String const title("Title");
  KivWindowStackChangedEvent const event(3, true, title);
  EXPECT_EQ(event.getEventType(), 848);
  EXPECT_STREQ(event.getEventName(), "KivWindowStackChanged");
  EXPECT_EQ(event.GetDepth(), 3u);
  EXPECT_TRUE(event.IsPushed());
  EXPECT_EQ(event.GetTitle().block(), title.block());
  EXPECT_FALSE(KivWindowStackChangedEvent(0, false, title).IsPushed());
}

TEST(WindowStackChangedEvent, ItsDepthIsReadAs32Bits) {
  EXPECT_EQ(KivWindowStackChangedEvent(0x100000002, true, "").GetDepth(), 2u);
}

TEST(SystemSettingsChangedEvent, CarriesTheChange) {
  KivSystemSettingsChangedEvent const event(SV::SYSCHANGE_FONTS);
  EXPECT_EQ(event.getEventType(), 849);
  EXPECT_STREQ(event.getEventName(), "SystemSettingsChanged");
  EXPECT_EQ(event.GetChange(), SV::SYSCHANGE_FONTS);
}

TEST(BeforeGrabFocusEvent, CarriesNothing) {
  KivBeforeGrabFocusEvent const event;
  EXPECT_EQ(event.getEventType(), 850);
  EXPECT_STREQ(event.getEventName(), "BeforeGrabFocus");
  EXPECT_EQ(sizeof event, sizeof(KivEvent));
}

// The focus

class FocusWindow : public SV::Window {
public:
  FocusWindow() : Window(nullptr) {}
  void GrabFocus() override { ++grabs; }
  int grabs = 0;
};

class Veto : public KivEventListener {
public:
  Veto(long result, Calls & calls) : result_(result), calls_(calls) {
    setEventHandler(KIV_EVENT_BeforeGrabFocus, &Veto::refuse);
  }

private:
  void refuse(KivEvent * event) {
    calls_.push_back(event->getEventName());
    event->setResultValue(result_);
  }

  long result_;
  Calls & calls_;
};

class GrabFocus : public testing::Test {
protected:
  GrabFocus() {
    SV::SetProcessData(GetModuleHandleA(nullptr), GetCurrentThreadId(), SW_SHOWNORMAL);
    SV::InitSV(0, nullptr);
    window = std::make_unique<FocusWindow>();
  }
  ~GrabFocus() override {
    window.reset();
    SV::DeInitSV();
  }

  std::unique_ptr<FocusWindow> window;
  Calls calls;
};

TEST_F(GrabFocus, WithoutAListenerTakesTheFocus) {
  EXPECT_TRUE(KivBeforeGrabFocusEvent::GrabFocus(window.get()));
  EXPECT_EQ(window->grabs, 1);
}

TEST_F(GrabFocus, IsForbiddenByAnyResultOtherThan0) {
  for (long const result : {1L, -1L, 0x7FFFFFFFL}) {
    Veto const veto(result, calls);
    EXPECT_FALSE(KivBeforeGrabFocusEvent::GrabFocus(window.get())) << result;
  }
  EXPECT_EQ(window->grabs, 0);
  EXPECT_EQ(calls, Calls(3, "BeforeGrabFocus"));
}

TEST_F(GrabFocus, AListenerThatSets0LetsItPass) {
  Veto const veto(0, calls);
  EXPECT_TRUE(KivBeforeGrabFocusEvent::GrabFocus(window.get()));
  EXPECT_EQ(calls.size(), 1u);
}

TEST_F(GrabFocus, ALaterListenerMayClearAVetoAndEveryOneIsAsked) {
  Veto const later(0, calls);
  Veto const earlier(1, calls);
  EXPECT_TRUE(KivBeforeGrabFocusEvent::GrabFocus(window.get()));
  EXPECT_EQ(window->grabs, 1);
  EXPECT_EQ(calls.size(), 2u);
}

TEST_F(GrabFocus, ANullWindowAsksTheListenersAndGetsNothing) {
  Veto const veto(0, calls);
  EXPECT_FALSE(KivBeforeGrabFocusEvent::GrabFocus(nullptr));
  EXPECT_EQ(calls.size(), 1u);
}

TEST_F(GrabFocus, GivesARealWindowTheFocus) {
  SV::Window real(nullptr, SV::WB_TITLE);
  real.Show();
  EXPECT_TRUE(KivBeforeGrabFocusEvent::GrabFocus(&real));
  EXPECT_EQ(GetFocus(), real.GethWnd());
}

// The listener of a dynamic console, whose lines go to a debugger too

class DynamicConsoleListener : public testing::Test {
protected:
  support::DebugLines const debug;
  KivDynamicConsoleListener const listener;
};

TEST_F(DynamicConsoleListener, WritesThePhaseOfTheStartUp) {
  class Phase : public KivEvent {
  public:
    Phase() : KivEvent(KIV_EVENT_AppChangeStartupPhase) {}

  private:
    String text_ = "Loading the library";
    int number_ [[maybe_unused]] = 4;
  } phase;
  phase.trigger();
  EXPECT_EQ(debug.all(), (Calls{"Loading the library\n"}));
}

TEST_F(DynamicConsoleListener, WritesThatTheApplicationIsInitialized) {
  kivtest::trigger(KIV_EVENT_AppInitialized);
  EXPECT_EQ(debug.all(), (Calls{"[kiv] Application initialized\n"}));
}

TEST_F(DynamicConsoleListener, WritesThatTheApplicationEnds) {
  KivExitAppEvent("end(0)").trigger();
  EXPECT_EQ(debug.all(), (Calls{"[kiv] Application shutdown event recognized\n"}));
}

TEST_F(DynamicConsoleListener, WritesChangesOfTheWindowStack) {
  KivWindowStackChangedEvent(2, true, "Open [1]").trigger();
  KivWindowStackChangedEvent(1, false, "").trigger();
  KivWindowStackChangedEvent(3000000000, true, "50%s %n").trigger();
  EXPECT_EQ(debug.all(), (Calls{"[kiv] WinStack: += 2 [Open [1]]\n", "[kiv] WinStack: -= 1 []\n",
                                "[kiv] WinStack: += 3000000000 [50%s %n]\n"}));
}

TEST_F(DynamicConsoleListener, HearsOfAllBeforeNormalPriorities) {
  for (KivEventType const type : {KIV_EVENT_AppChangeStartupPhase, KIV_EVENT_AppInitialized, KIV_EVENT_AppExit,
                                  KIV_EVENT_KivWindowStackChanged}) {
    auto const actions = kivtest::actionsOf(type);
    ASSERT_EQ(actions.size(), 1u) << type;
    EXPECT_EQ(actions[0].priority, 600) << type;
  }
  EXPECT_EQ(KivEventDispatcher::Instance().size(), 4u);
}

} // namespace
