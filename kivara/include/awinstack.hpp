#pragma once
/// \file
/// The stack of parent windows: the open dialogs of the program, the newest on top. A new dialog is placed over the topmost
/// visible one. All functions are for the main thread.
///
/// \code
///   Kiv_PushParentWindow(&dialog); // the dialog is about to open
///   ...
///   Kiv_PopParentWindow(&dialog);  // in its destructor at the latest
/// \endcode

#include "export.hpp"

namespace SV {
class Window;
}

/// Puts a window on top. A window that is already on the stack moves to the top; for a new one a KivWindowStackChangedEvent
/// is triggered, with an empty title if the window's memory cannot be read. Null is reported as an internal error and
/// ignored. The stack does not own its windows. Throws std::bad_alloc, without an event.
KIV_API void Kiv_PushParentWindow(SV::Window * window);

/// Removes a window from the stack, wherever it is in it, and triggers a KivWindowStackChangedEvent. A null window is
/// reported as an internal error. So is one whose memory cannot be read, but it is still removed.
/// \return the window; null if it was not on the stack
KIV_API SV::Window * Kiv_PopParentWindow(SV::Window * window);

/// The window that a new dialog should be placed over: the topmost visible window of the stack, or else the application
/// window if it is visible, or else null. A window of the stack whose memory cannot be read is reported as an internal
/// error.
/// \param firstIndex  how many windows to skip, from the top
KIV_API SV::Window * Kiv_GetTopWindow(unsigned long firstIndex);
