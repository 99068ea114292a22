#pragma once
/// \file
/// The wish of the user at the console that the service end.

namespace service {

/// An event that is set by Ctrl+C and Ctrl+Break, and when the console is closed. From the first call on none of them ends the
/// process by itself. The handle belongs to the process: it is never closed.
void * stopSignal();

} // namespace service
