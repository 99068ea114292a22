#pragma once
/// \file
/// The keys and clicks that ask for help.

#include "tools/winapi.hpp"

namespace SV {
class Window;
}

namespace SV::detail {

/// Handles a message of the event loop that asks for help according to EnableHelp, or ends extended help. False for any other
/// message, which must then be dispatched.
bool isHelpMessage(MSG const & message);

/// Starts the application's help, if there is one, with the topic of a window or, if it has none, of the nearest window around it
/// that has one; without a topic for null.
void startHelp(Window const * window);

} // namespace SV::detail
