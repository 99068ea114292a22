#pragma once
/// \file
/// The running timers. The listener gets their messages.

namespace SV::detail {

/// Calls Timeout of the timer with that number; does nothing if it has been stopped.
void timeOut(unsigned long long id);

void stopTimers();

} // namespace SV::detail
