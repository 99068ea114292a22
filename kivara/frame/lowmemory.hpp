#pragma once
/// \file
/// What happens when memory runs out: the runtime asks the user, through a handler that is installed when the library
/// is loaded.

namespace kivara {

/// Makes malloc, and so operator new, call the handler. After the library has been loaded, an executable's start-up code sets
/// this mode again from its variable _newmode. kivara_main defines that; for other programs the entry calls this.
void askHandlerOnLowMemory();

} // namespace kivara
