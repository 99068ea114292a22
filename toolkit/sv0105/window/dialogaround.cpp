#include "window/dialogaround.hpp"

#include "sv/dialog.hpp"
#include "window/handlemap.hpp"

namespace SV::detail {

Dialog * dialogAround(HWND window) {
  for (; window; window = GetAncestor(window, GA_PARENT)) {
    if (auto * const dialog = dynamic_cast<Dialog *>(windowOf(window)))
      return dialog;
    if ((GetWindowLongPtrA(window, GWL_STYLE) & WS_CHILD) == 0)
      return nullptr;
  }
  return nullptr;
}

} // namespace SV::detail
