#pragma once
/// \file
/// The modeler's own events.

#include "kivara.hpp"

namespace modeler {

/// A step of the start. The text comes first: the library's console shows it.
class StartupPhaseEvent : public KivEvent {
public:
  static constexpr KivEventType kEventType = KIV_EVENT_AppChangeStartupPhase;

  explicit StartupPhaseEvent(SV::String const & text) : KivEvent(kEventType), text_(text) {}

  SV::String const & GetText() const { return text_; }

private:
  SV::String text_;
};

/// The program is ready.
class InitializedEvent : public KivEvent {
public:
  static constexpr KivEventType kEventType = KIV_EVENT_AppInitialized;

  InitializedEvent() : KivEvent(kEventType) {}
};

} // namespace modeler
