#pragma once
/// \file
/// The unhandled exception filter of the process, from the load of the library to its end. Internal.

namespace kivara::crash {

/// Installs the filter so that nothing in the process can replace it, unless a debugger is attached. Called at process attach.
/// \param module  an address in this library, which then stays loaded: the filter and the changed entry point lead into it
void installFilter(void const * module);

/// Called at process detach.
void uninstallFilter();

} // namespace kivara::crash
