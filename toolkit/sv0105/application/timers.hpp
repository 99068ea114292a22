#pragma once
/// \file
/// The timers that run. Their messages reach the listener.

namespace SV::detail {

/// Calls Timeout of the timer with that number; nothing for one that has been stopped.
void timeOut(unsigned long long id);

void stopTimers();

} // namespace SV::detail
