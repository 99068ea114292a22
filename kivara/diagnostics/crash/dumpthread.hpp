#pragma once
/// \file
/// A thread cannot take a faithful picture of its own registers, so a second one does it. Internal.

namespace kivara::crash {

/// Suspends the calling thread, writes about it into the open report from another one, and resumes it.
/// \param silent  only the section on the stack is written, without its lines
/// \return false when no thread could be started, or it did not begin within 30 seconds, as happens to a caller that holds the
///         lock of the loader. GetLastError has the reason
bool dumpThisThread(bool silent);

} // namespace kivara::crash
