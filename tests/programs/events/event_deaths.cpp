// Listeners that die before and after the dispatcher, and how: a static of the program, one of a DLL (event_plug.dll), and
// objects that event_holder.dll ends when the dispatcher is gone. All is recorded. KIVARA_DEATH:
// - "end": the program returns
// - "unload": the DLL with the listener is unloaded before a second event
// - "inside": a handler ends the process with exit(3)

#include "event_holder.hpp"
#include "event_survivor.hpp"

#include "tools/winapi.hpp"

#include <new>

namespace {

class Event : public KivEvent {
public:
  Event() : KivEvent(kSurvivorType) {}
};

void trigger() {
  Event event;
  event.trigger();
}

Survivor survivor("static of the program");

alignas(Survivor) char room[sizeof(Survivor)];

/// What is left to do for a listener whose dispatcher is gone.
void endLate(void * object) {
  auto * const listener = static_cast<Survivor *>(object);
  record("late, dispatcher %s", KivEventDispatcher::isShutDown() ? "gone" : "there");
  trigger();
  listener->enter();
  trigger();
  Survivor * const copy = new Survivor(*listener);
  delete copy;
}

void endInPlace(void * object) {
  endLate(object);
  static_cast<Survivor *>(object)->~Survivor();
}

void endOnHeap(void * object) {
  endLate(object);
  delete static_cast<Survivor *>(object);
}

/// A sequence that the program enters in the map, which makes it the dispatcher's.
class RecordedSequence : public KivEventActionSeq {
public:
  explicit RecordedSequence(KivEventType type) : type_(type) { KivEventDispatcher::Instance().emplace(type, this); }
  ~RecordedSequence() override {
    record("sequence %d dies, dispatcher %s", type_, KivEventDispatcher::isShutDown() ? "gone" : "there");
  }

private:
  KivEventType type_;
};

class Exiter : public KivEventListener {
public:
  Exiter() { setEventHandler(kSurvivorType, &Exiter::leave, static_cast<KivEventPriority>(-1)); }

private:
  void leave(KivEvent *) { std::exit(3); }
};

} // namespace

int main() {
  hold(new (room) Survivor("late object in static memory of the program"), endInPlace);
  hold(new Survivor("late object of the DLL"), endOnHeap);
  for (KivEventType const type : {KIV_EVENT_LAST, KIV_EVENT_FIRST, KIV_EVENT_OpenModel})
    new RecordedSequence(type);
  HMODULE const plug = LoadLibraryA("event_plug.dll");
  trigger();
  if (setting("DEATH") == "unload") {
    FreeLibrary(plug);
    trigger();
  }
  if (setting("DEATH") == "inside") {
    static Exiter exiter;
    trigger();
  }
  record("returns");
  return 0;
}
