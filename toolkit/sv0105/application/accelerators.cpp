#include "application/accelerators.hpp"

#include "application/toolkit.hpp"
#include "sv/accelerator.hpp"
#include "window/keys.hpp"

#include <algorithm>

namespace SV {

using detail::InsertedAccelerator;
using detail::toolkit;

namespace {

auto placeOf(Accelerator const * accelerator) {
  std::vector<InsertedAccelerator> & inserted = toolkit().accelerators;
  return std::find_if(inserted.begin(), inserted.end(),
                      [accelerator](InsertedAccelerator const & each) { return each.accelerator == accelerator; });
}

/// Whether its keys work in the current modal dialog, if there is one.
bool isInEffect(InsertedAccelerator const & inserted) {
  int const depth = toolkit().modalDepth;
  return depth == inserted.modalDepth || (inserted.scope == ACCEL_WITH_DIALOG && depth == inserted.modalDepth + 1);
}

} // namespace

bool Application::InsertAccel(Accelerator * accelerator, unsigned short scope) {
  if (!accelerator || placeOf(accelerator) != toolkit().accelerators.end())
    return false;
  toolkit().accelerators.push_back({accelerator, scope, toolkit().modalDepth});
  return true;
}

bool Application::RemoveAccel(Accelerator * accelerator) {
  auto const place = placeOf(accelerator);
  if (place == toolkit().accelerators.end())
    return false;
  toolkit().accelerators.erase(place);
  return true;
}

namespace detail {

bool isAccelerator(MSG const & message) {
  if ((message.message != WM_KEYDOWN && message.message != WM_SYSKEYDOWN) || toolkit().accelerators.empty())
    return false;
  KeyCode const key = codeOfKey(message.wParam);
  if (key == 0)
    return false;
  auto const code = static_cast<KeyCode>(key | heldModifiers());
  // A copy: a handler may remove accelerators or delete them.
  std::vector<InsertedAccelerator> const inserted = toolkit().accelerators;
  return std::any_of(inserted.rbegin(), inserted.rend(), [code](InsertedAccelerator const & each) {
    return placeOf(each.accelerator) != toolkit().accelerators.end() && isInEffect(each) &&
           each.accelerator->Press(code);
  });
}

} // namespace detail

} // namespace SV
