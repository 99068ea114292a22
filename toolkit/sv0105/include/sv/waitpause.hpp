#pragma once
/// \file
/// WaitPause: the ordinary pointer while a box is open.

#include "sv/application.hpp"

namespace SV {

/// Switches the wait pointer off, and brings its count back at its end. Main thread.
class WaitPause {
public:
  WaitPause() : count_(Application::IsWait()) {
    if (count_ != 0)
      Application::Wait(0);
  }
  WaitPause(WaitPause const &) = delete;
  WaitPause & operator=(WaitPause const &) = delete;
  ~WaitPause() { Application::Wait(count_); }

private:
  unsigned short count_;
};

} // namespace SV
