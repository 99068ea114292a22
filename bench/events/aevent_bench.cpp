// The event bus: a trigger beside Boost.Signals2 and beside a loop that does nothing but the calls, and how the costs of
// signing off and of dead actions grow.

#include "aevent.hpp"
#include "support/ratio.hpp"

#include <boost/signals2.hpp>

#include <iterator>
#include <memory>
#include <vector>

namespace {

constexpr KivEventType kType = KIV_EVENT_SetAttributeValue;
constexpr int kPriorities[] = {0, 600, 300, 0, 600, -1, 7, 0};

class Event : public KivEvent {
public:
  explicit Event(KivEventType type) : KivEvent(type) {}
};

KivEventPriority priorityOf(std::size_t index) {
  return static_cast<KivEventPriority>(kPriorities[index % std::size(kPriorities)]);
}

class Listener : public KivEventListener {
public:
  Listener() = default;
  Listener(KivEventType type, KivEventPriority priority) { enter(type, priority); }

  void enter(KivEventType type, KivEventPriority priority) { setEventHandler(type, &Listener::handle, priority); }
  void enterTyped(KivEventPriority priority) { setEventHandler<&Listener::handleTyped>(kType, priority); }
  void handle(KivEvent * event) {
    ++calls_;
    benchmark::DoNotOptimize(event);
  }

private:
  void handleTyped(Event * event) {
    ++calls_;
    benchmark::DoNotOptimize(event);
  }

  long calls_ = 0;
};

using Listeners = std::vector<std::unique_ptr<Listener>>;

Listeners listenersOf(std::size_t count, KivEventType type) {
  Listeners listeners;
  for (std::size_t i = 0; i < count; ++i)
    listeners.push_back(std::make_unique<Listener>(type, priorityOf(i)));
  return listeners;
}

void triggerOften(benchmark::State & state) {
  for (auto _ : state) {
    Event event(kType);
    event.trigger();
  }
}

bench::Body trigger(std::size_t handlers) {
  return [handlers](benchmark::State & state) {
    Listeners const listeners = listenersOf(handlers, kType);
    triggerOften(state);
  };
}

bench::Body triggerTyped(std::size_t handlers) {
  return [handlers](benchmark::State & state) {
    std::vector<Listener> listeners(handlers);
    for (std::size_t i = 0; i < handlers; ++i)
      listeners[i].enterTyped(priorityOf(i));
    triggerOften(state);
  };
}

using Signal = boost::signals2::signal<void(KivEvent *)>;

bench::Body signal(std::size_t handlers) {
  return [handlers](benchmark::State & state) {
    std::vector<Listener> listeners(handlers);
    Signal signal;
    for (std::size_t i = 0; i < handlers; ++i)
      signal.connect(-priorityOf(i), [listener = &listeners[i]](KivEvent * event) { listener->handle(event); });
    for (auto _ : state) {
      Event event(kType);
      signal(&event);
    }
  };
}

struct Callee {
  KivEventListener * listener;
  KivEventHandler handler;
};

bench::Body loop(std::size_t handlers) {
  return [handlers](benchmark::State & state) {
    Listeners listeners;
    std::vector<Callee> callees;
    for (std::size_t i = 0; i < handlers; ++i) {
      listeners.push_back(std::make_unique<Listener>());
      callees.push_back({listeners.back().get(), static_cast<KivEventHandler>(&Listener::handle)});
    }
    for (auto _ : state) {
      Event event(kType);
      benchmark::ClobberMemory();
      for (Callee const & callee : callees)
        (callee.listener->*callee.handler)(&event);
    }
  };
}

KivEventType typeOf(std::size_t index) { return static_cast<KivEventType>(KIV_EVENT_FIRST + 1 + index % 153); }

/// One of so many listeners, spread over all types, leaves and comes back.
bench::Body signOff(std::size_t count) {
  return [count](benchmark::State & state) {
    Listeners listeners;
    for (std::size_t i = 0; i < count; ++i)
      listeners.push_back(std::make_unique<Listener>(typeOf(i), priorityOf(i)));
    std::size_t next = 0;
    for (auto _ : state) {
      listeners[next]->manualSignOff();
      listeners[next]->enter(typeOf(next), priorityOf(next));
      next = (next + 7919) % count;
    }
  };
}

bench::Body disconnect(std::size_t count) {
  return [count](benchmark::State & state) {
    std::vector<Listener> listeners(count);
    std::vector<Signal> signals(153);
    std::vector<boost::signals2::connection> connections(count);
    auto const connect = [&](std::size_t i) {
      connections[i] = signals[i % signals.size()].connect(
          -priorityOf(i), [listener = &listeners[i]](KivEvent * event) { listener->handle(event); });
    };
    for (std::size_t i = 0; i < count; ++i)
      connect(i);
    std::size_t next = 0;
    for (auto _ : state) {
      connections[next].disconnect();
      connect(next);
      next = (next + 7919) % count;
    }
  };
}

/// Leaves while its type is being walked, so that its action stays as a dead one, until its end.
class Leaver : public KivEventListener {
public:
  Leaver() { setEventHandler(kType, &Leaver::leave); }
  ~Leaver() override { setEventHandler(kType, &Leaver::leave); } // what signs this one off frees the dead one too

private:
  void leave(KivEvent *) { manualSignOff(); }
};

bench::Body triggerBehindDead(std::size_t dead) {
  return [dead](benchmark::State & state) {
    Listeners const listeners = listenersOf(8, kType);
    std::vector<Leaver> leavers(dead);
    Event(kType).trigger();
    triggerOften(state);
  };
}

constexpr char kSignals[] = "Boost.Signals2";
constexpr char kLoop[] = "a loop over pairs of object and member function";

bench::Pair const pairs[] = {
    {"KivEvent: trigger, 1 handler", bench::timesAsFast(5), trigger(1), kSignals, signal(1)},
    {"KivEvent: trigger, 8 handlers", bench::timesAsFast(5), trigger(8), kSignals, signal(8)},
    {"KivEvent: trigger, 64 handlers", bench::timesAsFast(5), trigger(64), kSignals, signal(64)},
    {"KivEvent: trigger, 1 handler, the calls alone", bench::shown(), trigger(1), kLoop, loop(1)},
    {"KivEvent: trigger, 8 handlers, the calls alone", bench::shown(), trigger(8), kLoop, loop(8)},
    {"KivEvent: trigger, 64 handlers, the calls alone", bench::atMost(1.3), trigger(64), kLoop, loop(64)},
    {"KivEvent: trigger, 64 handlers that take the event's class", bench::shown(), triggerTyped(64),
     "handlers that take any event", trigger(64)},
    {"KivEventListener: sign off and on, one of 10,000", bench::shown(), signOff(10'000), kSignals, disconnect(10'000)},
    {"KivEventListener: sign off and on, 10,000 beside 1,000", bench::shown(), signOff(10'000), "one of 1,000",
     signOff(1'000)},
    {"KivEventListener: sign off and on, 1,000 beside 100", bench::shown(), signOff(1'000), "one of 100", signOff(100)},
    {"KivEvent: trigger, 8 handlers and 10 dead actions", bench::shown(), triggerBehindDead(10), "none dead",
     triggerBehindDead(0)},
    {"KivEvent: trigger, 8 handlers and 100 dead actions", bench::shown(), triggerBehindDead(100), "none dead",
     triggerBehindDead(0)},
    {"KivEvent: trigger, 8 handlers and 1,000 dead actions", bench::shown(), triggerBehindDead(1'000), "none dead",
     triggerBehindDead(0)},
};

} // namespace
