#include "aevent.hpp"

#include <algorithm>
#include <iterator>
#include <memory>

namespace {

// A plain value: listeners of static lifetime may die after the dispatcher and still ask.
bool shutDown = false;

} // namespace

KivEventData::~KivEventData() = default;

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
  bool const isSkipped = listener == nullptr || handler == nullptr;
  auto action = std::make_unique<KivEventAction>(KivEventAction{listener, handler, priority, false, isSkipped});
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
    if (walking) { // its place has to stay
      action->removed = true;
      action->skipped = true;
      return false;
    }
    delete action;
    return true;
  };
  std::erase_if(actions_, isGone);
}

// Products wait for this loop. As an address the end takes fewer instructions than as a number, so that they fit one cache
// line, where the build places them: a fifth of its time.
void KivEventActionSeq::fire(KivEvent * event) {
  KivEventType const outer = firing_;
  firing_ = event->getEventType();
  // Both ends are read anew for each place: a handler may add to the sequence.
  for (std::size_t place = 0;; ++place) {
    KivEventAction const * const * const at = actions_.data() + place;
    if (at >= actions_.data() + actions_.size())
      break;
    KivEventAction const & action = **at;
    if (!action.skipped)
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

KivEventActionSeq * KivEventDispatcher::sequenceOf(KivEventType type) const {
  unsigned const index = static_cast<unsigned>(type) - KIV_EVENT_FIRST;
  if (index < std::size(byIndex_))
    return byIndex_[index];
  auto const entry = find(type);
  return entry != end() ? entry->second : nullptr;
}

void KivEventDispatcher::dispatch(KivEvent * event) {
  dispatching_ = true;
  if (KivEventActionSeq * const sequence = sequenceOf(event->getEventType()))
    sequence->fire(event);
  dispatching_ = false;
}

KivEventActionSeq & KivEventDispatcher::madeSequence(KivEventType type) {
  auto sequence = std::make_unique<KivEventActionSeq>();
  emplace(type, sequence.get());
  unsigned const index = static_cast<unsigned>(type) - KIV_EVENT_FIRST;
  if (index < std::size(byIndex_))
    byIndex_[index] = sequence.get();
  return *sequence.release();
}

void KivEventDispatcher::registerAction(KivEventType type, KivEventListener * listener, KivEventHandler handler,
                                        KivEventPriority priority) {
  KivEventActionSeq * const known = sequenceOf(type);
  KivEventActionSeq & sequence = known != nullptr ? *known : madeSequence(type);
  sequence.add(listener, handler, priority);
}

void KivEventDispatcher::signOff(KivEventListener * listener) {
  for (auto const & entry : *this)
    entry.second->remove(listener);
}
