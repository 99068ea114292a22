#pragma once
/// \file
/// The concrete events of the library. All are built on the sender's stack, on the main thread; only the console's log-off raises
/// KivExitAppEvent on another thread, straight before the process ends.

#include "aevent.hpp"
#include "export.hpp"
#include "sv/application.hpp"
#include "tools/string.hpp"

#include <cstddef>

/// Rights in the database; 0 is none.
enum KivDBPermission : long { KIV_DB_PERMISSION_NONE = 0 };

/// Something happened to a user. Raised by the administration.
class KIV_API KivUserEvent : public KivEvent {
public:
  static constexpr KivEventType kEventType = KIV_EVENT_User;

  /// What happened.
  enum ActionType : int {
#define KIV_ACTION(name) name,
#include "detail/aevents_user_actions.inc"
  };

  /// Permission type -1, database permission 0.
  KivUserEvent(ActionType action, long id);
  KivUserEvent(ActionType action, long id, long permissionType, KivDBPermission dbPermission);
  ~KivUserEvent() override;

  ActionType GetActionType() const { return action_; } ///< as given
  /// The enumerator's name; empty for another number.
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

/// Something happened to a user group. Raised by the administration.
class KIV_API KivUserGroupEvent : public KivEvent {
public:
  static constexpr KivEventType kEventType = KIV_EVENT_UserGroup;

  /// What happened.
  enum ActionType : int {
#define KIV_ACTION(name) name,
#include "detail/aevents_usergroup_actions.inc"
  };

  /// User -1.
  KivUserGroupEvent(ActionType action, long userGroupId);
  KivUserGroupEvent(ActionType action, long userGroupId, long userId);
  ~KivUserGroupEvent() override;

  ActionType GetActionType() const { return action_; } ///< as given
  /// The enumerator's name; empty for another number.
  SV::String GetActionName() const;
  long GetUserGroupID() const { return userGroupId_; }
  long GetUserID() const { return userId_; }

private:
  ActionType action_;
  long userGroupId_;
  long userId_;
};

/// The end of the program, and the one signal of it: see KivCleanUp.
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

/// A window went onto the stack of parent windows or left it.
class KIV_API KivWindowStackChangedEvent : public KivEvent {
public:
  static constexpr KivEventType kEventType = KIV_EVENT_KivWindowStackChanged;

  /// \param depth   windows on the stack after the change
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

/// A window is about to take the focus. A handler that leaves a result other than 0 forbids it; the last one that sets a result
/// decides. The event does not say which window.
class KIV_API KivBeforeGrabFocusEvent : public KivEvent {
public:
  static constexpr KivEventType kEventType = KIV_EVENT_BeforeGrabFocus;

  KivBeforeGrabFocusEvent();
  ~KivBeforeGrabFocusEvent() override;

  /// Asks the listeners and, unless they forbid it, gives the window the focus; true when it was given. Null never gets it.
  static bool GrabFocus(SV::Window * window);
};

/// Tells of events on the debug output, a "[kiv]" line each: AppInitialized, AppExit, KivWindowStackChanged, and of
/// AppChangeStartupPhase the text. It hears of them before all listeners of normal priority. The frame has one as long as
/// a dynamic console is open.
///
/// Whatever class a product gives its AppChangeStartupPhase event: it derives from KivEvent alone, and its first field is
/// an SV::String.
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
