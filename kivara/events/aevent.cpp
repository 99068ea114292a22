#include "aevent.hpp"

#include <algorithm>
#include <memory>

namespace {

// A plain value: listeners of static lifetime may die after the dispatcher and still ask.
bool shutDown = false;

char const * nameOf(KivEventType type) {
  unsigned long const index = static_cast<unsigned long>(type) - KIV_EVENT_FIRST;
  return index < Kiv_GetEventCount() ? Kiv_GetEventNames()[index] : "";
}

} // namespace

KivEventData::KivEventData(KivEventType type) : type_(type), name_(nameOf(type)) {}
KivEventData::~KivEventData() = default;

KivEvent::KivEvent(KivEventType type) : KivEventData(type) {}
KivEvent::~KivEvent() = default;

void KivEvent::trigger() {
  if (!shutDown)
    KivEventDispatcher::Instance().dispatch(this);
}

KivEventListener::KivEventListener() = default;
KivEventListener::KivEventListener(KivEventListener const &) {}
// NOLINTNEXTLINE(bugprone-unhandled-self-assignment): nothing is assigned
KivEventListener & KivEventListener::operator=(KivEventListener const &) { return *this; }
KivEventListener::~KivEventListener() { manualSignOff(); }

void KivEventListener::setEventHandler(KivEventType type, KivEventHandler handler, KivEventPriority priority) {
  if (!shutDown)
    KivEventDispatcher::Instance().registerAction(type, this, handler, priority);
}

void KivEventListener::manualSignOff() {
  if (!shutDown)
    KivEventDispatcher::Instance().signOff(this);
}

KivEventActionSeq::KivEventActionSeq() = default;

KivEventActionSeq::~KivEventActionSeq() {
  for (KivEventAction const * action : actions_)
    delete action;
}

void KivEventActionSeq::add(KivEventListener * listener, KivEventHandler handler, KivEventPriority priority) {
  auto action = std::make_unique<KivEventAction>(KivEventAction{listener, handler, priority, false});
  auto const place = std::find_if(actions_.begin(), actions_.end(),
                                  [priority](KivEventAction const * each) { return each->priority <= priority; });
  auto const known = listeners_.insert(listener);
  try {
    actions_.insert(place, action.get());
  } catch (...) {
    if (known.second)
      listeners_.erase(known.first);
    throw;
  }
  static_cast<void>(action.release());
}

void KivEventActionSeq::remove(KivEventListener * listener) {
  if (listeners_.erase(listener) == 0)
    return;
  bool const walking = firing_ != KIV_EVENT_FIRST;
  auto const isGone = [listener, walking](KivEventAction * action) {
    if (action->listener != listener)
      return false;
    action->removed = true;
    if (walking)
      return false; // the walk's place has to stay valid
    delete action;
    return true;
  };
  std::erase_if(actions_, isGone);
}

void KivEventActionSeq::fire(KivEvent * event) {
  KivEventType const outer = firing_;
  firing_ = event->getEventType();
  // By index and with a fresh end: a handler may add to the sequence.
  for (std::size_t place = 0; place < actions_.size(); ++place) {
    KivEventAction const & action = *actions_[place];
    if (!action.removed && action.listener != nullptr && action.handler != nullptr)
      (action.listener->*action.handler)(event);
  }
  firing_ = outer; // not reached when a handler throws: the sequence then counts as walked from there on
}

KivEventDispatcher::KivEventDispatcher() = default;

KivEventDispatcher::~KivEventDispatcher() {
  shutDown = true;
  for (auto const & entry : *this)
    delete entry.second;
  clear();
}

KivEventDispatcher & KivEventDispatcher::Instance() {
  static KivEventDispatcher theDispatcher;
  return theDispatcher;
}

bool KivEventDispatcher::isShutDown() { return shutDown; }

void KivEventDispatcher::dispatch(KivEvent * event) {
  dispatching_ = true;
  auto const entry = find(event->getEventType());
  if (entry != end())
    entry->second->fire(event);
  dispatching_ = false;
}

void KivEventDispatcher::registerAction(KivEventType type, KivEventListener * listener, KivEventHandler handler,
                                        KivEventPriority priority) {
  auto entry = find(type);
  if (entry == end()) {
    auto sequence = std::make_unique<KivEventActionSeq>();
    entry = emplace(type, sequence.get()).first;
    static_cast<void>(sequence.release());
  }
  entry->second->add(listener, handler, priority);
}

void KivEventDispatcher::signOff(KivEventListener * listener) {
  for (auto const & entry : *this)
    entry.second->remove(listener);
}
