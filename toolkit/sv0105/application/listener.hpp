#pragma once
/// \file
/// The hidden window that hears for the process: changes of the system, the program's turn, and posted events.

namespace SV::detail {

enum class Posted { User, App };

bool registerListener();

/// Makes the window. Where the system has none to give, the program hears nothing.
void openListener();

/// Closes it and gives its class back.
void closeListener();

/// False when there is no window to post to.
bool post(Posted kind, unsigned long event, void * data);

} // namespace SV::detail
