// event_classes CLASS: triggers an event of some class for a handler that takes another one, or the same.

#include "aevents.hpp"
#include "support/harness/process_guard.hpp"

#include <cstdio>
#include <cstring>

namespace {

/// The type of an exit in another class.
class OtherEvent : public KivEvent {
public:
  OtherEvent() : KivEvent(KIV_EVENT_AppExit) {}
};

class DerivedEvent : public KivExitAppEvent {
public:
  DerivedEvent() : KivExitAppEvent("derived") {}
};

class Hearer : public KivEventListener {
public:
  Hearer() {
    setEventHandler<&Hearer::hear>();
    setEventHandler<&Hearer::hearAny>(KIV_EVENT_AppInitialized);
  }

private:
  void hear(KivExitAppEvent *) { std::puts("heard"); }
  void hearAny(KivEvent *) { std::puts("heard"); }
};

class InitializedEvent : public KivEvent {
public:
  InitializedEvent() : KivEvent(KIV_EVENT_AppInitialized) {}
};

} // namespace

int main(int argc, char ** argv) {
  support::ProcessGuard const guard;
  Hearer const hearer;
  char const * const what = argc == 2 ? argv[1] : "";
  if (std::strcmp(what, "own") == 0)
    KivExitAppEvent("own").trigger();
  else if (std::strcmp(what, "derived") == 0)
    DerivedEvent().trigger();
  else if (std::strcmp(what, "other") == 0)
    OtherEvent().trigger();
  else if (std::strcmp(what, "any") == 0)
    InitializedEvent().trigger();
  else
    return 2;
  return 0;
}
