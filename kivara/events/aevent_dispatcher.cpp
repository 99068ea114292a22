#include "aevent_dispatcher.hpp"

#include <algorithm>
#include <memory>

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
    if (walking) { // the positions of the others must not change
      action->removed = true;
      return false;
    }
    delete action;
    return true;
  };
  std::erase_if(actions_, isGone);
}

void KivEventActionSeq::fire(KivEvent * event) {
  KivEventType const outer = firing_;
  firing_ = event->getEventType();
  // By position, and both ends are read afresh at each step: a handler may add to the sequence. Addresses are compared, not
  // counts, because the products spend much time in this loop and it is shorter that way.
  for (std::size_t position = 0; actions_.data() + position < actions_.data() + actions_.size(); ++position) {
    KivEventAction const & action = *actions_[position];
    if (!action.removed && action.listener != nullptr && action.handler != nullptr)
      (action.listener->*action.handler)(event);
  }
  firing_ = outer; // not reached if a handler throws: the sequence then counts as being walked for good
}

KivEventDispatcher::KivEventDispatcher() = default;

KivEventDispatcher::~KivEventDispatcher() {
  shutDown_ = true;
  for (auto const & entry : *this)
    delete entry.second;
  clear();
}

KivEventDispatcher & KivEventDispatcher::Instance() {
  static KivEventDispatcher theDispatcher;
  return theDispatcher;
}

bool KivEventDispatcher::shutDown_ = false;

bool KivEventDispatcher::isShutDown() { return shutDown_; }

// Here, and not in aevent.cpp, so that the compiler can inline the calls on the way to the walk.
void KivEvent::trigger() {
  if (!KivEventDispatcher::isShutDown())
    KivEventDispatcher::Instance().dispatch(this);
}

void KivEventDispatcher::dispatch(KivEvent * event) {
  dispatching_ = true;
  auto const entry = find(event->getEventType());
  if (entry != end() && entry->second != nullptr)
    entry->second->fire(event);
  dispatching_ = false;
}

KivEventActionSeq & KivEventDispatcher::sequenceFor(KivEventType type) {
  auto const entry = find(type);
  if (entry != end() && entry->second != nullptr)
    return *entry->second;
  auto sequence = std::make_unique<KivEventActionSeq>();
  insert_or_assign(type, sequence.get());
  return *sequence.release();
}

void KivEventDispatcher::registerAction(KivEventType type, KivEventListener * listener, KivEventHandler handler,
                                        KivEventPriority priority) {
  sequenceFor(type).add(listener, handler, priority);
}

void KivEventDispatcher::signOff(KivEventListener * listener) {
  for (auto const & entry : *this)
    if (entry.second != nullptr)
      entry.second->remove(listener);
}
