#include "windows.hpp"

#include "toolkit.hpp"

namespace SV::detail {

bool registerWindowClasses() { return true; }

void unregisterWindowClasses() {}

void destroyWindows() {}

void applyApplicationFont() {}

} // namespace SV::detail
