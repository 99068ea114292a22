#include "aevents.hpp"

#include "sv/window.hpp"

#include <cstddef>

using SV::String;

namespace {

char const * const userActions[] = {
#define KIV_ACTION(name) #name,
#include "detail/aevents_user_actions.inc"
};

char const * const userGroupActions[] = {
#define KIV_ACTION(name) #name,
#include "detail/aevents_usergroup_actions.inc"
};

template <std::size_t count> String nameOf(char const * const (&names)[count], int action) {
  return static_cast<std::size_t>(action) < count ? names[action] : nullptr;
}

} // namespace

KivUserEvent::KivUserEvent(ActionType action, long id) : KivUserEvent(action, id, -1, KIV_DB_PERMISSION_NONE) {}
KivUserEvent::KivUserEvent(ActionType action, long id, long permissionType, KivDBPermission dbPermission)
    : KivEvent(KIV_EVENT_User), action_(action), id_(id), permissionType_(permissionType), dbPermission_(dbPermission) {
}
KivUserEvent::~KivUserEvent() = default;

String KivUserEvent::GetActionName() const { return nameOf(userActions, action_); }

KivUserGroupEvent::KivUserGroupEvent(ActionType action, long userGroupId)
    : KivUserGroupEvent(action, userGroupId, -1) {}
KivUserGroupEvent::KivUserGroupEvent(ActionType action, long userGroupId, long userId)
    : KivEvent(KIV_EVENT_UserGroup), action_(action), userGroupId_(userGroupId), userId_(userId) {}
KivUserGroupEvent::~KivUserGroupEvent() = default;

String KivUserGroupEvent::GetActionName() const { return nameOf(userGroupActions, action_); }

KivExitAppEvent::KivExitAppEvent(String const & reason) : KivEvent(KIV_EVENT_AppExit), reason_(reason) {}
KivExitAppEvent::~KivExitAppEvent() = default;

KivWindowStackChangedEvent::KivWindowStackChangedEvent(std::size_t depth, bool pushed, String const & title)
    : KivEvent(KIV_EVENT_KivWindowStackChanged), depth_(depth), pushed_(pushed), title_(title) {}
KivWindowStackChangedEvent::~KivWindowStackChangedEvent() = default;

KivSystemSettingsChangedEvent::KivSystemSettingsChangedEvent(SV::SysChangeType change)
    : KivEvent(KIV_EVENT_SystemSettingsChanged), change_(change) {}
KivSystemSettingsChangedEvent::~KivSystemSettingsChangedEvent() = default;

KivBeforeGrabFocusEvent::KivBeforeGrabFocusEvent() : KivEvent(KIV_EVENT_BeforeGrabFocus) {}
KivBeforeGrabFocusEvent::~KivBeforeGrabFocusEvent() = default;

bool KivBeforeGrabFocusEvent::GrabFocus(SV::Window * window) {
  KivBeforeGrabFocusEvent event;
  event.trigger();
  if (event.getResultValue() != 0 || window == nullptr)
    return false;
  window->GrabFocus();
  return true;
}
