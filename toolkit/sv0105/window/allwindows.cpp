#include "window/allwindows.hpp"

#include "application/toolkit.hpp"
#include "window/windowaccess.hpp"

namespace SV::detail {

void destroyWindows() {
  // A parent takes its children along, and their handlers may do anything to the list.
  std::vector<Window *> & windows = toolkit().windows;
  for (std::size_t i = 0; i < windows.size();) {
    if (windows[i]->GethWnd()) {
      WindowAccess::destroy(*windows[i]);
      i = 0;
    } else {
      ++i;
    }
  }
}

void applyApplicationFont() {
  for (Window * window : toolkit().windows)
    if (!WindowAccess::hasFont(*window))
      WindowAccess::useFont(*window);
}

} // namespace SV::detail
