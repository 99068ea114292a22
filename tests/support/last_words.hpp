#pragma once
/// \file
/// What a test program says before it ends badly: the test main switches both on.

namespace support {

/// An exception that nobody handles prints its code and the stack to the error stream, one line for each frame as
/// "module+offset" for addr2line, and then ends the process with the exception's code.
void printStackOnCrash();

/// After that many seconds the process prints the boxes that it or its children still show and the stack of the calling
/// thread, and ends with code 99. The runner's own limit must be longer.
void startWatchdog(double seconds);

} // namespace support
