#pragma once
/// \file
/// Events and listeners of the tests.

#include "aevent.hpp"
#include "aevent_dispatcher.hpp"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace kivtest {

/// An event of any type.
class TestEvent : public KivEvent {
public:
  explicit TestEvent(KivEventType type) : KivEvent(type) {}
};

/// Triggers an event of that type and gives its result.
inline long trigger(KivEventType type) {
  TestEvent event(type);
  event.trigger();
  return event.getResultValue();
}

using Calls = std::vector<std::string>;

/// A listener that notes each call under its name.
class Listener : public KivEventListener {
public:
  Listener(Calls & calls, std::string name) : calls_(&calls), name_(std::move(name)) {}
  Listener(Calls & calls, std::string name, KivEventType type, int priority = 0) : Listener(calls, std::move(name)) {
    on(type, priority);
  }

  void on(KivEventType type, int priority = 0) {
    setEventHandler(type, &Listener::handle, static_cast<KivEventPriority>(priority));
  }
  void onSecond(KivEventType type, int priority = 0) {
    setEventHandler(type, &Listener::handleSecond, static_cast<KivEventPriority>(priority));
  }

  /// What the first handler does after its note.
  std::function<void(KivEvent *)> then;

private:
  void handle(KivEvent * event) {
    calls_->push_back(name_);
    if (then) {
      auto const action = then; // the listener may die in it
      action(event);
    }
  }
  void handleSecond(KivEvent *) { calls_->push_back(name_ + "'"); }

  Calls * calls_;
  std::string name_;
};

/// The actions of a type, dead ones included; none where the type has no sequence.
inline std::vector<KivEventAction> actionsOf(KivEventType type) {
  std::vector<KivEventAction> copies;
  KivEventDispatcher const & dispatcher = KivEventDispatcher::Instance();
  auto const entry = dispatcher.find(type);
  if (entry != dispatcher.end())
    for (KivEventAction const * action : entry->second->actions())
      copies.push_back(*action);
  return copies;
}

inline constexpr KivEventType kType = KIV_EVENT_SaveModel;
inline constexpr KivEventType kOther = KIV_EVENT_OpenModel;

/// Makes listeners of one type that note their calls in one list.
class Dispatcher : public testing::Test {
protected:
  std::unique_ptr<Listener> listener(std::string const & name, int priority = 0) {
    return std::make_unique<Listener>(calls, name, kType, priority);
  }

  Calls calls;
};

} // namespace kivtest
