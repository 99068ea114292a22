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

// A product that binds a reference to a type needs the exported symbol, and the declaration in the class does not export it.
// NOLINTBEGIN(readability-redundant-declaration)
constexpr KivEventType KivUserEvent::kEventType;
constexpr KivEventType KivUserGroupEvent::kEventType;
constexpr KivEventType KivExitAppEvent::kEventType;
constexpr KivEventType KivWindowStackChangedEvent::kEventType;
constexpr KivEventType KivSystemSettingsChangedEvent::kEventType;
constexpr KivEventType KivBeforeGrabFocusEvent::kEventType;
// NOLINTEND(readability-redundant-declaration)

KivUserEvent::KivUserEvent(ActionType action, long id) : KivUserEvent(action, id, -1, KIV_DB_PERMISSION_NONE) {}
KivUserEvent::KivUserEvent(ActionType action, long id, long permissionType, KivDBPermission dbPermission)
    : KivEvent(kEventType), action_(action), id_(id), permissionType_(permissionType), dbPermission_(dbPermission) {}
KivUserEvent::~KivUserEvent() = default;

String KivUserEvent::GetActionName() const { return nameOf(userActions, action_); }

KivUserGroupEvent::KivUserGroupEvent(ActionType action, long userGroupId)
    : KivUserGroupEvent(action, userGroupId, -1) {}
KivUserGroupEvent::KivUserGroupEvent(ActionType action, long userGroupId, long userId)
    : KivEvent(kEventType), action_(action), userGroupId_(userGroupId), userId_(userId) {}
KivUserGroupEvent::~KivUserGroupEvent() = default;

String KivUserGroupEvent::GetActionName() const { return nameOf(userGroupActions, action_); }

KivExitAppEvent::KivExitAppEvent(String const & reason) : KivEvent(kEventType), reason_(reason) {}
KivExitAppEvent::~KivExitAppEvent() = default;

KivWindowStackChangedEvent::KivWindowStackChangedEvent(std::size_t depth, bool pushed, String const & title)
    : KivEvent(kEventType), depth_(depth), pushed_(pushed), title_(title) {}
KivWindowStackChangedEvent::~KivWindowStackChangedEvent() = default;

KivSystemSettingsChangedEvent::KivSystemSettingsChangedEvent(SV::SysChangeType change)
    : KivEvent(kEventType), change_(change) {}
KivSystemSettingsChangedEvent::~KivSystemSettingsChangedEvent() = default;

KivBeforeGrabFocusEvent::KivBeforeGrabFocusEvent() : KivEvent(kEventType) {}
KivBeforeGrabFocusEvent::~KivBeforeGrabFocusEvent() = default;

bool KivBeforeGrabFocusEvent::GrabFocus(SV::Window * window) {
  KivBeforeGrabFocusEvent event;
  event.trigger();
  if (event.getResultValue() != 0 || window == nullptr)
    return false;
  window->GrabFocus();
  return true;
}
