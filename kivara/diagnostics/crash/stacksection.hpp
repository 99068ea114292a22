#pragma once
/// \file
/// The part of a crash report on the stack: it says where symbols would be found. The stack itself is in the minidump.
/// Internal.

namespace kivara::crash {

/// \param silent  only the blank line at the end, and the line of a call that failed, are written
void writeStackSection(bool silent);

/// Gives back what the first section took.
/// \return whether there was something
bool cleanUpSymbols();

} // namespace kivara::crash
