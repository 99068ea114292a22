#pragma once
/// \file
/// Blocks that end at a page without access. Internal to allocation.cpp.

#include "tools/winapi.hpp"

#include <cstddef>
#include <cstdint>

namespace support {

/// A reserved range of addresses that is handed out in slots of 2, 4, 8, ... pages: unused pages, the pages of one
/// block, a page without access. A freed slot waits after those of its size that were freed earlier. Any thread.
/// Of blocks that live at the same time, 20,000 are guarded: each is a mapping with another after it, of which Linux allows a process
/// 65,530, and Wine ends one that can have no more.
class GuardArena {
public:
  /// The one arena; it never dies.
  static GuardArena & instance();

  /// A block whose bytes are not set; null where there is no room.
  void * take(std::size_t size);

  bool owns(void const * block) const { return pageOf(block) < kPages; }
  bool isLive(void const * block) const { return owns(block) && pages_[pageOf(block)].live; }
  std::size_t sizeOf(void const * block) const { return pages_[pageOf(block)].size; }

  /// Makes the block's memory inaccessible. Ends the process when there is no such block.
  void giveBack(void * block);

private:
  static constexpr std::size_t kPageSize = 4096;
  static constexpr std::size_t kPages = std::size_t{2} << 20;
  static constexpr std::uint32_t kNone = 0;
  static constexpr std::uint32_t kWaiting = 4096;
  static constexpr int kSlotSizes = 20;
  static constexpr std::uint32_t kMostLive = 20'000;

  /// What is known of a page; it counts for a slot's first page (next) and for a block's first page (the others).
  struct Page {
    std::size_t size;
    std::uint32_t next;
    bool live;
  };
  struct Queue {
    std::uint32_t first, last, count;
  };

  GuardArena();
  std::size_t pageOf(void const * address) const {
    return (reinterpret_cast<std::uintptr_t>(address) - reinterpret_cast<std::uintptr_t>(base_)) / kPageSize;
  }
  std::uint32_t takeSlot(int slotSize);
  void putSlot(int slotSize, std::uint32_t slot);
  void checkSlack(char const * block, std::size_t size) const;

  char * base_;
  Page * pages_;
  std::uint32_t fresh_ = 2;
  std::uint32_t live_ = 0;
  Queue queues_[kSlotSizes] = {};
  SRWLOCK lock_ = SRWLOCK_INIT;
};

} // namespace support
