#include "window/procedure.hpp"

#include "application/guard.hpp"
#include "application/hook.hpp"
#include "application/toolkit.hpp"
#include "window/handlemap.hpp"
#include "window/windowaccess.hpp"

#include <iterator>

namespace SV::detail {

namespace {

constexpr WORD kProgramIcon = 1;

Window * windowBeingMade = nullptr;

struct ClassDescription {
  char const * name;
  int background; ///< a system colour, or -1 for none
  int extraBytes = 0;
};

constexpr ClassDescription kClasses[] = {
    {kWindowClass, COLOR_WINDOW}, {kFrameClass, -1}, {kChildClass, COLOR_WINDOW}, {kDialogClass, -1, DLGWINDOWEXTRA}};

bool registerClass(ClassDescription const & window) {
  WNDCLASSEXA description = {};
  description.cbSize = sizeof description;
  description.style = CS_DBLCLKS;
  description.lpfnWndProc = windowProcedure;
  description.cbWndExtra = window.extraBytes;
  description.hInstance = toolkit().instance;
  description.hIcon = LoadIconA(toolkit().instance, MAKEINTRESOURCEA(kProgramIcon));
  description.hCursor = LoadCursorA(nullptr, IDC_ARROW);
  description.hbrBackground = window.background < 0 ? nullptr : GetSysColorBrush(window.background);
  description.lpszClassName = window.name;
  return RegisterClassExA(&description) != 0;
}

LRESULT answer(HWND handle, UINT message, WPARAM wParam, LPARAM lParam) {
  LRESULT result = 0;
  if (askHook(handle, message, wParam, lParam, result))
    return result;
  Window * const window = windowOf(handle);
  return window ? WindowAccess::handle(*window, message, wParam, lParam)
                : DefWindowProcA(handle, message, wParam, lParam);
}

} // namespace

bool registerWindowClasses() {
  for (std::size_t i = 0; i < std::size(kClasses); ++i)
    if (!registerClass(kClasses[i])) {
      while (i-- > 0)
        UnregisterClassA(kClasses[i].name, toolkit().instance);
      return false;
    }
  return true;
}

void unregisterWindowClasses() {
  for (ClassDescription const & window : kClasses)
    UnregisterClassA(window.name, toolkit().instance);
}

Attaching::Attaching(Window * window) { windowBeingMade = window; }

Attaching::~Attaching() { windowBeingMade = nullptr; }

void attach(Window & window, HWND handle) {
  WindowAccess::handle(window) = handle;
  remember(handle, window);
}

LRESULT CALLBACK windowProcedure(HWND handle, UINT message, WPARAM wParam, LPARAM lParam) {
  if (windowBeingMade && !windowOf(handle)) {
    attach(*windowBeingMade, handle);
    windowBeingMade = nullptr;
  }
  LRESULT result = 0;
  if (!guarded([&] { result = answer(handle, message, wParam, lParam); }))
    result = 0;
  // The handler may have deleted the object, so it is looked for again.
  if (message == WM_NCDESTROY)
    if (Window * const window = windowOf(handle))
      WindowAccess::detach(*window);
  return result;
}

void suppressShowing(WINDOWPOS & position) {
  if (toolkit().windowSuppression)
    position.flags &= ~static_cast<UINT>(SWP_SHOWWINDOW);
}

} // namespace SV::detail
