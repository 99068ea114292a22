#pragma once
/// \file
/// From a thread's registers to the functions that called each other.

#include "findings/addressspace.hpp"

#include <string>
#include <vector>

namespace kivcrash {

struct Frame {
  std::uint64_t address = 0; ///< of the fault in the first frame, otherwise where the function returns to
  bool isReturn = false;
  bool isGuess = false; ///< found on the stack by its looks, since the way there is not known
};

struct Walk {
  std::vector<Frame> frames;
  std::string end; ///< why it ends before the thread's beginning; empty where it does not
};

/// Walks up to 1,000 frames. Where no file of a module fits, the next return address on the stack is guessed.
Walk walkStack(AddressSpace const & space, CONTEXT const & registers);

} // namespace kivcrash
