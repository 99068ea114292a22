#pragma once
/// \file
/// Where a password comes from: never from the command line, which other users of the machine can read.

#include <string>

namespace kivuser {

/// From the console, if the standard input is one: without echo, and asked for twice. Otherwise the first line of the standard
/// input as it is, without its end.
/// \return in the system's ANSI code page; throws std::runtime_error with the reason when there is none
std::string readPassword();

} // namespace kivuser
