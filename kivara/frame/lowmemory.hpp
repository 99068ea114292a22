#pragma once
/// \file
/// What happens when memory runs out: the runtime asks the user, through a handler that is installed when the library
/// is loaded.

namespace kivara {

/// Has malloc, and so operator new, ask the handler. An executable's start-up code sets this mode anew after the
/// library has been loaded, from its variable _newmode: kivara_main defines it, and the entry calls this for those who
/// do not.
void askHandlerOnLowMemory();

} // namespace kivara
