#include "sv/application.hpp"

#include "application/listener.hpp"
#include "application/timers.hpp"
#include "application/toolkit.hpp"
#include "drawing/sourcedevice.hpp"
#include "window/allwindows.hpp"
#include "window/procedure.hpp"

namespace SV {

using detail::toolkit;

void SetProcessData(HINSTANCE instance, unsigned long threadId, int showCommand) {
  toolkit().instance = instance;
  toolkit().threadId = threadId;
  toolkit().showCommand = showCommand;
}

bool InitSV(int, char **) {
  if (toolkit().isUp)
    return true;
  if (!detail::registerListener())
    return false;
  if (!detail::registerWindowClasses()) {
    detail::closeListener();
    return false;
  }
  detail::openListener();
  toolkit().appWindowShown = false;
  return toolkit().isUp = true;
}

void DeInitSV() {
  toolkit().isUp = false;
  detail::stopTimers();
  detail::destroyWindows();
  toolkit().pictures.clear();
  detail::dropSourceDevice();
  detail::unregisterWindowClasses();
  detail::closeListener();
}

} // namespace SV
