#include "aevent.hpp"

#include "aevent_dispatcher.hpp"

namespace {

char const * nameOf(KivEventType type) {
  bool const isInCatalogue = type >= KIV_EVENT_FIRST && type <= KIV_EVENT_LAST;
  return isInCatalogue ? Kiv_GetEventNames()[type - KIV_EVENT_FIRST] : "";
}

} // namespace

KivEventData::KivEventData(KivEventType type) : type_(type), name_(nameOf(type)) {}
KivEventData::~KivEventData() = default;

KivEvent::~KivEvent() = default;

KivEventListener::KivEventListener() = default;
KivEventListener::KivEventListener(KivEventListener const &) {}
// NOLINTNEXTLINE(bugprone-unhandled-self-assignment): nothing is assigned
KivEventListener & KivEventListener::operator=(KivEventListener const &) { return *this; }
KivEventListener::~KivEventListener() { manualSignOff(); }

void KivEventListener::setEventHandler(KivEventType type, KivEventHandler handler, KivEventPriority priority) {
  if (!KivEventDispatcher::isShutDown())
    KivEventDispatcher::Instance().registerAction(type, this, handler, priority);
}

void KivEventListener::manualSignOff() {
  if (!KivEventDispatcher::isShutDown())
    KivEventDispatcher::Instance().signOff(this);
}
