#pragma once
/// \file
/// A listener that records what it hears, and its death.

#include "programs/frame/frame_program.hpp"

#include "aevent_dispatcher.hpp"

inline constexpr KivEventType kSurvivorType = KIV_EVENT_SaveModel;

class Survivor : public KivEventListener {
public:
  explicit Survivor(char const * name) : name_(name) { enter(); }
  ~Survivor() override {
    record("%s dies, dispatcher %s", name_, KivEventDispatcher::isShutDown() ? "gone" : "there");
    manualSignOff();
  }

  void enter() { setEventHandler(kSurvivorType, &Survivor::hear); }

private:
  void hear(KivEvent *) { record("%s hears", name_); }

  char const * name_;
};
