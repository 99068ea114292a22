#pragma once
/// \file
/// How much of the runtime's heap is in use: the tests that pin what stays allocated look at it.

#include <malloc.h>

#include <cstddef>

namespace heapuse {

inline std::size_t usedBytes() {
  std::size_t used = 0;
  _HEAPINFO entry{};
  while (_heapwalk(&entry) == _HEAPOK)
    if (entry._useflag == _USEDENTRY)
      used += entry._size;
  return used;
}

/// By how many bytes ten runs of \p call make the heap grow, for each run.
template <class Call> double growthPerCall(Call const & call) {
  constexpr int kRuns = 10;
  call(); // what is made once
  std::size_t const before = usedBytes();
  for (int i = 0; i < kRuns; ++i)
    call();
  return (static_cast<double>(usedBytes()) - static_cast<double>(before)) / kRuns;
}

} // namespace heapuse
