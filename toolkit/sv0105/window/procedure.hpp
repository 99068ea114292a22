#pragma once
/// \file
/// The window classes of the toolkit, and the procedure that gives the messages of a system window to its object.

#include "sv/window.hpp"
#include "tools/winapi.hpp"

namespace SV::detail {

/// Registers the window classes; false when the system refuses one.
bool registerWindowClasses();
void unregisterWindowClasses();

/// The procedure of all of the toolkit's windows.
LRESULT CALLBACK windowProcedure(HWND handle, UINT message, WPARAM wParam, LPARAM lParam);

/// While it lives, the next system window that has no object yet is the one of \p window, if not null: it gets its
/// first messages before the system has returned its handle.
class Attaching {
public:
  explicit Attaching(Window * window);
  Attaching(Attaching const &) = delete;
  Attaching & operator=(Attaching const &) = delete;
  ~Attaching();
};

void attach(Window & window, HWND handle);

/// Under window suppression, keeps a change of position from showing the window.
void suppressShowing(WINDOWPOS & position);

} // namespace SV::detail
