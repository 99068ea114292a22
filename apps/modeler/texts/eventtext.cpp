#include "texts/eventtext.hpp"

#include "background/startupphase.hpp"

using SV::String;

namespace modeler {
namespace {

String changeName(SV::SysChangeType change) {
  switch (change) {
  case SV::SYSCHANGE_COLORS: return "colours";
  case SV::SYSCHANGE_SETTINGS: return "settings";
  case SV::SYSCHANGE_DISPLAY: return "display";
  case SV::SYSCHANGE_THEME: return "theme";
  case SV::SYSCHANGE_FONTS: return "fonts";
  case SV::SYSCHANGE_LOCALE: return "regional settings";
  }
  return String(static_cast<int>(change));
}

String contents(KivUserEvent const & event) {
  return event.GetActionName() + ", user " + String(event.GetID()) + ", permission type " +
         String(event.GetPermissionType()) + ", database permission " +
         String(static_cast<long>(event.GetDBPermission()));
}

String contents(KivUserGroupEvent const & event) {
  return event.GetActionName() + ", group " + String(event.GetUserGroupID()) + ", user " + String(event.GetUserID());
}

String contents(KivExitAppEvent const & event) { return event.GetReason(); }

String contents(KivWindowStackChangedEvent const & event) {
  return String(event.IsPushed() ? "+= " : "-= ") + String(event.GetDepth()) + " [" + event.GetTitle() + "]";
}

String contents(KivSystemSettingsChangedEvent const & event) { return changeName(event.GetChange()); }

String contents(StartupPhaseEvent const & event) { return event.GetText(); }

/// Whether it is an event of that class; its contents are then in \p text.
template <class Event> bool isTold(KivEvent const & event, String & text) {
  auto const * const known = dynamic_cast<Event const *>(&event);
  if (known != nullptr)
    text = contents(*known);
  return known != nullptr;
}

template <class... Events> String textOfOneOf(KivEvent const & event) {
  String text;
  static_cast<void>((isTold<Events>(event, text) || ...));
  return text;
}

} // namespace

String eventText(KivEvent const & event) {
  return textOfOneOf<KivUserEvent, KivUserGroupEvent, KivExitAppEvent, KivWindowStackChangedEvent,
                     KivSystemSettingsChangedEvent, StartupPhaseEvent>(event);
}

} // namespace modeler
