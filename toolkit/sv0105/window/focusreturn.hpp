#pragma once
/// \file
/// The keyboard comes back to where it was before a box.

#include "tools/winapi.hpp"

namespace SV::detail {

/// Notes who has the keyboard, and gives it back at its end where that can have it and somebody else of this thread, or
/// nobody, has it.
class FocusReturn {
public:
  FocusReturn();
  FocusReturn(FocusReturn const &) = delete;
  FocusReturn & operator=(FocusReturn const &) = delete;
  ~FocusReturn();

private:
  HWND focus_;
};

} // namespace SV::detail
