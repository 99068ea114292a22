#pragma once
/// \file
/// The stack of parent windows: the open dialogs of the program, the newest in front. A new dialog lies on the topmost of
/// them. All of it is for the main thread.
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

/// Puts a window on top. One that is on the stack already goes to the top; for a new one a KivWindowStackChangedEvent is
/// triggered, with an empty title when the window cannot be read. Null is reported as an internal error and left alone.
/// The stack does not own its windows. Throws std::bad_alloc; no event comes then.
KIV_API void Kiv_PushParentWindow(SV::Window * window);

/// Takes a window off the stack, wherever it lies in it, and triggers a KivWindowStackChangedEvent. A null window is
/// reported as an internal error, and so is one whose memory cannot be read; it leaves the stack all the same.
/// \return the window; null when it is not on the stack
KIV_API SV::Window * Kiv_PopParentWindow(SV::Window * window);

/// The window that a new dialog should lie on: the topmost visible one of the stack, or else the application window when
/// that is visible, or else null. A window of the stack whose memory cannot be read is reported as an internal error.
/// \param firstIndex  how many windows of the top to pass over
KIV_API SV::Window * Kiv_GetTopWindow(unsigned long firstIndex);
