#pragma once
/// \file
/// Looking at and interfering with what our modules allocate.
///
/// "What our modules allocate" is operator new, malloc, calloc and realloc as called from the test program and from the
/// DLLs beside it, the bodies of std::string and of other things inside the shared libstdc++ included. Exceptions on
/// their way, the runtime's own buffers, HeapAlloc and aligned new are not part of it. The first use changes the import
/// tables of the modules that are loaded by then; blocks from before stay what they are and may be freed as ever.

#include <cstddef>

namespace support {

/// Counts the allocations of the thread that made it, until another thread makes one.
/// \code
///   support::AllocationCount const count;
///   copy = text;
///   EXPECT_EQ(count.value(), 0u);
/// \endcode
class AllocationCount {
public:
  AllocationCount();
  std::size_t value() const;

private:
  std::size_t start_;
};

/// While it lives, an allocation of more than so many bytes fails: malloc gives null, new throws std::bad_alloc. The
/// runtime's new handler is not asked. All threads.
class AllocationLimit {
public:
  explicit AllocationLimit(std::size_t mostBytes);
  ~AllocationLimit();
  AllocationLimit(AllocationLimit const &) = delete;
  AllocationLimit & operator=(AllocationLimit const &) = delete;

private:
  std::size_t before_;
};

/// While it lives, each new block ends directly before a page without access, and a freed block's memory is without
/// access too: a read or write past the end and a use after free fault on the spot, and the test main prints the stack.
/// Freeing a block twice, or a pointer into its middle, ends the process with a message. All threads.
///
/// - Addresses come into use again only after some thousand further blocks of about that size.
/// - Blocks are not aligned beyond what their size divides by. In debug builds, where misaligned access traps, they are
///   aligned to 8, and bytes between a block's end and the page are looked at when it is freed.
/// - Blocks above 1 GiB, and those beyond some 25,000 at a time, come from the runtime without a guard.
/// - Blocks that outlive the guard are freed as ever.
class GuardPages {
public:
  GuardPages();
  ~GuardPages();
  GuardPages(GuardPages const &) = delete;
  GuardPages & operator=(GuardPages const &) = delete;

  /// Is \p block one with a guard page after it that is not freed yet?
  static bool guards(void const * block);
};

} // namespace support
