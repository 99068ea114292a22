#pragma once
/// \file
/// The hidden window that receives changes of the system's settings, activations of the program and posted events.

namespace SV::detail {

enum class Posted { User, App };

bool registerListener();

/// Creates the window. If the system refuses it, the program receives none of these.
void openListener();

/// Closes it and unregisters its class.
void closeListener();

/// False if there is no window to post to.
bool post(Posted kind, unsigned long event, void * data);

} // namespace SV::detail
