#pragma once
/// \file
/// How many handles this process has open, also under Wine.

#include "support/harness/wine.hpp"

#include <cstdint>

namespace support {

/// Wine does not count them, so each possible one is asked for, up to a long row that are not there: the system gives the lowest that
/// is free. Its list of all handles is not asked: Wine's server dies of that when another process ends meanwhile.
inline int countHandles() {
  DWORD counted = 0;
  if (!isWine())
    return GetProcessHandleCount(GetCurrentProcess(), &counted) ? static_cast<int>(counted) : -1;
  constexpr std::uintptr_t kRow = 0x400;
  int count = 0;
  std::uintptr_t last = 0;
  for (std::uintptr_t value = 4; value < last + kRow; value += 4) {
    DWORD flags = 0;
    if (!GetHandleInformation(reinterpret_cast<HANDLE>(value), &flags))
      continue;
    last = value;
    ++count;
  }
  return count;
}

} // namespace support
