#pragma once
/// \file
/// The system's own message box, for what has to be said when little else works.

#include "sv/export.hpp"

namespace SV {

class Window;

using BoxOwner = Window const * (*)();

/// What a box says, and what the log of suppressed dialogs says in its place.
struct BoxText {
  BoxText(char const * text) : shown(text), logged(text) {}                        ///< the same
  BoxText(char const * inBox, char const * inLog) : shown(inBox), logged(inLog) {} ///< each its own

  char const * shown;
  char const * logged;
};

/// Both show a box of the system, with the wait pointer off as long as it is open, and give the keyboard back to the window
/// that had it. They allocate nothing themselves, so that they serve when memory has run out. For all other messages there
/// is MessBox.
///
/// \code
///   if (SV::ShowBoxOrNothing("Try again?", "Memory", MB_RETRYCANCEL) == IDRETRY) ...
/// \endcode
///
/// \param text, caption  not null
/// \param style          the system's, as MessageBoxA has it
/// \param owner          asked, once it is certain that the box is shown, for what it lies over, which takes no input
///                       meanwhile; null, and an answer of null, for nothing
/// \return the number of the pressed button, as MessageBoxA has it; 0 when nothing was shown. GetLastError then says why the
///         system had no box, or is 0 under suppression
/// @{

/// Under dialog suppression the text goes to the log of suppressed dialogs instead.
SV_API int ShowBoxOrLog(BoxText const & text, char const * caption, unsigned style, BoxOwner owner = nullptr);

/// Under dialog suppression nothing happens.
SV_API int ShowBoxOrNothing(char const * text, char const * caption, unsigned style, BoxOwner owner = nullptr);

/// @}

} // namespace SV
