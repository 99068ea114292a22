#include "background/eventlog.hpp"

#include "sv/sysdepen.hpp"
#include "texts/eventtext.hpp"
#include "tools/winapi.hpp"

namespace modeler {

EventLog::EventLog() {
  for (int type = KIV_EVENT_FIRST + 1; type < KIV_EVENT_LAST; ++type)
    setEventHandler(static_cast<KivEventType>(type), &EventLog::add, KIV_PRIORITY_EARLY);
}

EventLog::~EventLog() { manualSignOff(); }

void EventLog::add(KivEvent * event) {
  Row const row{event->getEventType(), event->getEventName(), eventText(*event)};
  Kiv_Trace("event %d %s %s", row.number, row.name.c_str(), row.text.c_str());
  // The end that a log-off brings comes on a thread of the system's own: rows and windows belong to the main one.
  if (GetCurrentThreadId() != SV::Sysdepen::GetThreadId())
    return;
  if (rows_.size() == kMostRows)
    rows_.erase(rows_.begin());
  rows_.push_back(row);
  if (handler_)
    handler_(row);
}

} // namespace modeler
