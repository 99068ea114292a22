#include "sv/timer.hpp"

#include "application/timers.hpp"
#include "application/toolkit.hpp"

#include <utility>

namespace SV {

using detail::toolkit;

namespace {

/// A number that no running timer has, so that a late message of a stopped timer is recognised.
unsigned long long nextId() {
  static unsigned long long id = 0;
  return ++id;
}

} // namespace

Timer::Timer() = default;

Timer::~Timer() { Timer::Stop(); }

bool Timer::Start(unsigned long milliseconds) {
  Stop();
  unsigned long long const id = nextId();
  if (!toolkit().listener || !SetTimer(toolkit().listener, id, milliseconds, nullptr))
    return false;
  id_ = id;
  toolkit().timers[id] = this;
  return true;
}

void Timer::Stop() {
  unsigned long long const id = std::exchange(id_, 0);
  if (id == 0)
    return;
  toolkit().timers.erase(id);
  if (toolkit().listener)
    KillTimer(toolkit().listener, id);
}

void Timer::Timeout() {
  if (TimeoutHandler const handler = handler_) // a copy: it may be changed while it runs, or die with this object
    handler(this);
}

Timer::TimeoutHandler Timer::ChangeTimeoutHdl(TimeoutHandler handler) {
  return std::exchange(handler_, std::move(handler));
}

namespace detail {

void timeOut(unsigned long long id) {
  auto const place = toolkit().timers.find(id);
  if (place != toolkit().timers.end())
    place->second->Timeout();
}

void stopTimers() {
  while (!toolkit().timers.empty())
    toolkit().timers.begin()->second->Stop();
}

} // namespace detail

} // namespace SV
