#include "window/handlemap.hpp"

#include "application/toolkit.hpp"

namespace SV::detail {

Window * windowOf(HWND handle) {
  auto const & objects = toolkit().objects;
  auto const place = objects.find(handle);
  return place != objects.end() ? place->second : nullptr;
}

void remember(HWND handle, Window & window) { toolkit().objects[handle] = &window; }

void forget(HWND handle) { toolkit().objects.erase(handle); }

} // namespace SV::detail
