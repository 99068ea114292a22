#pragma once
/// \file
/// FocusReturn: the keyboard comes back to where it was before a box.

#include "sv/export.hpp"

namespace SV {

/// Notes which window of the program has the keyboard. At its end it gives the keyboard back to that window, if that can take
/// it and another window of the program, or none, has it. ModalDialog and the boxes of the system have one of their own; it
/// is for those who disable windows around them. Main thread.
class SV_API FocusReturn {
public:
  FocusReturn();
  FocusReturn(FocusReturn const &) = delete;
  FocusReturn & operator=(FocusReturn const &) = delete;
  ~FocusReturn();

private:
  HWND focus_;
};

} // namespace SV
