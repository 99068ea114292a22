#pragma once
/// \file
/// The keys and clicks that ask for help.

#include "tools/winapi.hpp"

namespace SV {
class Window;
}

namespace SV::detail {

/// Answers a message of the event loop that asks for help by the modes of EnableHelp, or ends an extended one. False: it
/// is not one and has to be dispatched.
bool isHelpMessage(MSG const & message);

/// Starts the application's help, if there is one, with the topic of a window, or of the nearest one around it that has
/// one; without a topic for null.
void startHelp(Window const * window);

} // namespace SV::detail
