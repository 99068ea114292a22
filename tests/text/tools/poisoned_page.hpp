#pragma once
/// \file
/// Memory at an address that looks like that of freed memory.

#include "tools/winapi.hpp"

#include <cstdint>

namespace kivtest {

/// A writable page at an address whose lower half is 0xCDCD0000, for the lifetime of this object.
class PoisonedPage {
public:
  PoisonedPage() {
    for (std::uintptr_t upper = 2; upper < 200 && address_ == nullptr; ++upper)
      address_ = VirtualAlloc(reinterpret_cast<void *>(upper << 32 | 0xCDCD0000), 4096, MEM_RESERVE | MEM_COMMIT,
                              PAGE_READWRITE);
  }
  PoisonedPage(PoisonedPage const &) = delete;
  PoisonedPage & operator=(PoisonedPage const &) = delete;
  ~PoisonedPage() { VirtualFree(address_, 0, MEM_RELEASE); }

  /// Null when the system had none.
  char * address() const { return static_cast<char *>(address_); }

private:
  void * address_ = nullptr;
};

} // namespace kivtest
