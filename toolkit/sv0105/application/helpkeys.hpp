#pragma once
/// \file
/// The keys and clicks that ask for help.

#include "tools/winapi.hpp"

namespace SV::detail {

/// Answers a message of the event loop that asks for help by the modes of EnableHelp, or ends an extended one. False: it
/// is not one and has to be dispatched.
bool isHelpMessage(MSG const & message);

} // namespace SV::detail
