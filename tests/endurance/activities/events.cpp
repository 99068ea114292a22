// Events, sent to listeners that come and go.

#include "../activity.hpp"

#include "aevents.hpp"

#include <vector>

namespace endurance {
namespace {

class Counter : public KivEventListener {
public:
  Counter() {
    setEventHandler<&Counter::onUser>();
    setEventHandler<&Counter::onGroup>(KIV_PRIORITY_EARLY);
  }
  ~Counter() override { manualSignOff(); }
  int heard = 0;

private:
  void onUser(KivUserEvent * event) {
    ++heard;
    event->setResultValue(event->GetID());
  }
  void onGroup(KivUserGroupEvent *) { ++heard; }
};

class Events : public Activity {
public:
  bool round() override {
    std::vector<Counter> counters(20);
    for (long id = 1; id <= 50; ++id) {
      KivUserEvent event(KivUserEvent::AfterCreate, id);
      event.trigger();
      expect(event.getResultValue() == id, "nobody has answered an event");
      KivUserGroupEvent(KivUserGroupEvent::ActionType(0), id).trigger();
    }
    for (Counter const & counter : counters)
      expect(counter.heard == 100, "a listener has not heard all events");
    return true;
  }
};

} // namespace

ActivityPtr sendEvents(Place const &) { return std::make_unique<Events>(); }

} // namespace endurance
