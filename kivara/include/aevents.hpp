#pragma once
/// \file
/// The concrete events of the library, each with the type of its events as kEventType.
///
/// \code
///   void Status::onWindowStack(KivWindowStackChangedEvent * event) { show(event->GetDepth()); }
///
///   setEventHandler<&Status::onWindowStack>(); // in the constructor of Status, a KivEventListener
/// \endcode
///
/// They are built on the sender's stack and triggered on the main thread. The one exception: at a dynamic console, a log-off
/// or a shut-down triggers KivExitAppEvent on another thread, right before the process ends.

#include "aevent.hpp"
#include "export.hpp"
#include "sv/application.hpp"
#include "tools/string.hpp"

#include <cstddef>

/// Rights in the database; 0 means none.
enum KivDBPermission : long { KIV_DB_PERMISSION_NONE = 0 };

/// Something happened to a user. The administration triggers it.
class KIV_API KivUserEvent : public KivEvent {
public:
  static constexpr KivEventType kEventType = KIV_EVENT_User;

  /// What happened.
  enum ActionType : int {
#define KIV_ACTION(name) name,
#include "detail/aevents_user_actions.inc"
  };

  /// The first form sets the permission type to -1 and the database permission to 0.
  KivUserEvent(ActionType action, long id);
  KivUserEvent(ActionType action, long id, long permissionType, KivDBPermission dbPermission);
  ~KivUserEvent() override;

  ActionType GetActionType() const { return action_; } ///< as given
  /// The name of the action's enumerator; empty for any other number.
  SV::String GetActionName() const;
  long GetID() const { return id_; }
  long GetPermissionType() const { return permissionType_; }
  KivDBPermission GetDBPermission() const { return dbPermission_; }

private:
  ActionType action_;
  long id_;
  long permissionType_;
  KivDBPermission dbPermission_;
};

/// Something happened to a user group. The administration triggers it.
class KIV_API KivUserGroupEvent : public KivEvent {
public:
  static constexpr KivEventType kEventType = KIV_EVENT_UserGroup;

  /// What happened.
  enum ActionType : int {
#define KIV_ACTION(name) name,
#include "detail/aevents_usergroup_actions.inc"
  };

  /// The first form sets the user to -1.
  KivUserGroupEvent(ActionType action, long userGroupId);
  KivUserGroupEvent(ActionType action, long userGroupId, long userId);
  ~KivUserGroupEvent() override;

  ActionType GetActionType() const { return action_; } ///< as given
  /// The name of the action's enumerator; empty for any other number.
  SV::String GetActionName() const;
  long GetUserGroupID() const { return userGroupId_; }
  long GetUserID() const { return userId_; }

private:
  ActionType action_;
  long userGroupId_;
  long userId_;
};

/// The program ends. There is no other signal of the end; KivCleanUp waits for it.
class KIV_API KivExitAppEvent : public KivEvent {
public:
  static constexpr KivEventType kEventType = KIV_EVENT_AppExit;

  /// \param reason  "end(<exit code>)", "exception (minidump)" or "console"
  explicit KivExitAppEvent(SV::String const & reason);
  ~KivExitAppEvent() override;

  SV::String const & GetReason() const { return reason_; } ///< as given

private:
  SV::String reason_;
};

/// A window was added to the stack of parent windows or taken away.
class KIV_API KivWindowStackChangedEvent : public KivEvent {
public:
  static constexpr KivEventType kEventType = KIV_EVENT_KivWindowStackChanged;

  /// \param depth   the number of windows on the stack after the change
  /// \param pushed  true: added, false: taken away
  /// \param title   the window's text
  KivWindowStackChangedEvent(std::size_t depth, bool pushed, SV::String const & title);
  ~KivWindowStackChangedEvent() override;

  unsigned GetDepth() const { return static_cast<unsigned>(depth_); } ///< its lower 32 bits
  bool IsPushed() const { return pushed_; }
  SV::String const & GetTitle() const { return title_; }

private:
  std::size_t depth_;
  bool pushed_;
  SV::String title_;
};

/// A setting of the system has changed.
class KIV_API KivSystemSettingsChangedEvent : public KivEvent {
public:
  static constexpr KivEventType kEventType = KIV_EVENT_SystemSettingsChanged;

  explicit KivSystemSettingsChangedEvent(SV::SysChangeType change); ///< what has changed
  ~KivSystemSettingsChangedEvent() override;

  SV::SysChangeType GetChange() const { return change_; } ///< as given

private:
  SV::SysChangeType change_;
};

/// A window is about to take the focus. Any result but 0 forbids it; the last handler that sets a result decides. The event
/// does not say which window it is about.
class KIV_API KivBeforeGrabFocusEvent : public KivEvent {
public:
  static constexpr KivEventType kEventType = KIV_EVENT_BeforeGrabFocus;

  KivBeforeGrabFocusEvent();
  ~KivBeforeGrabFocusEvent() override;

  /// Triggers the event and, unless a handler forbids it, gives the window the focus. True when the window got it; null
  /// never does.
  static bool GrabFocus(SV::Window * window);
};

/// Writes events to the debug output: a "[kiv]" line for each AppInitialized, AppExit and KivWindowStackChanged, and the text
/// of each AppChangeStartupPhase. It hears them before all listeners of normal priority. The frame keeps one as long as a
/// dynamic console is open.
///
/// The class of AppChangeStartupPhase events is the product's, but it must derive from KivEvent alone, and its first field
/// must be an SV::String.
class KIV_API KivDynamicConsoleListener : public KivEventListener {
public:
  KivDynamicConsoleListener();
  ~KivDynamicConsoleListener() override;

private:
  void _onStartupPhase(KivEvent * event);
  void _onInitialized(KivEvent * event);
  void _onExit(KivEvent * event);
  void _onWindowStack(KivWindowStackChangedEvent * event);
};
