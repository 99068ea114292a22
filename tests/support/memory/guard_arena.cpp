#include "support/memory/guard_arena.hpp"

#include <bit>
#include <cstdio>
#include <cstring>
#include <exception>
#include <type_traits>

namespace support {
namespace {

#ifdef KIVARA_DEBUG
constexpr std::size_t kAlignment = 8;
#else
constexpr std::size_t kAlignment = 1;
#endif
constexpr char kSlackByte = '\x5A';
constexpr DWORD kBadFree = 0xE0000001;

std::size_t aligned(std::size_t size) { return (size + kAlignment - 1) / kAlignment * kAlignment; }

struct Shape {
  Shape(std::size_t size, std::size_t pageSize)
      : pages((aligned(size) + pageSize - 1) / pageSize), slotSize(std::bit_width(pages) - 1) {}
  std::size_t pages; ///< with access
  int slotSize;      ///< the slot has 2 << slotSize pages
};

[[noreturn]] void stop(char const * what, void const * block) {
  std::fprintf(stderr, "\n[test] block %p %s\n", block, what);
  std::fflush(stderr);
  RaiseException(kBadFree, EXCEPTION_NONCONTINUABLE, 0, nullptr);
  std::terminate();
}

class Locked {
public:
  explicit Locked(SRWLOCK & lock) : lock_(lock) { AcquireSRWLockExclusive(&lock_); }
  ~Locked() { ReleaseSRWLockExclusive(&lock_); }
  Locked(Locked const &) = delete;
  Locked & operator=(Locked const &) = delete;

private:
  SRWLOCK & lock_;
};

} // namespace

static_assert(std::is_trivially_destructible_v<GuardArena>, "blocks may be freed until the process ends");

GuardArena & GuardArena::instance() {
  static GuardArena arena;
  return arena;
}

GuardArena::GuardArena()
    : base_(static_cast<char *>(VirtualAlloc(nullptr, kPages * kPageSize, MEM_RESERVE, PAGE_NOACCESS))),
      pages_(
          static_cast<Page *>(VirtualAlloc(nullptr, kPages * sizeof(Page), MEM_RESERVE | MEM_COMMIT, PAGE_READWRITE))) {
  if (base_ == nullptr || pages_ == nullptr)
    stop("of addresses could not be reserved for guard pages", base_);
}

std::uint32_t GuardArena::takeSlot(int slotSize) {
  Queue & queue = queues_[slotSize];
  std::uint32_t const pages = 2u << slotSize;
  bool const isRoom = kPages - fresh_ >= pages;
  if (isRoom && queue.count < kWaiting) {
    fresh_ += pages;
    return fresh_ - pages;
  }
  std::uint32_t const slot = queue.first;
  if (slot != kNone) {
    queue.first = pages_[slot].next;
    --queue.count;
  }
  return slot;
}

void GuardArena::putSlot(int slotSize, std::uint32_t slot) {
  Queue & queue = queues_[slotSize];
  pages_[slot].next = kNone;
  (queue.first != kNone ? pages_[queue.last].next : queue.first) = slot;
  queue.last = slot;
  ++queue.count;
}

void * GuardArena::take(std::size_t size) {
  size = size != 0 ? size : 1;
  if (size > kPages * kPageSize / 8)
    return nullptr;
  Shape const shape(size, kPageSize);
  Locked const locked(lock_);
  std::uint32_t const slot = live_ < kMostLive ? takeSlot(shape.slotSize) : kNone;
  if (slot == kNone)
    return nullptr;
  std::size_t const guard = slot + (std::size_t{2} << shape.slotSize) - 1;
  char * const end = base_ + guard * kPageSize;
  if (VirtualAlloc(end - shape.pages * kPageSize, shape.pages * kPageSize, MEM_COMMIT, PAGE_READWRITE) == nullptr) {
    putSlot(shape.slotSize, slot);
    return nullptr;
  }
  char * const block = end - aligned(size);
  std::memset(block + size, kSlackByte, aligned(size) - size);
  Page & page = pages_[pageOf(block)];
  page.size = size;
  page.live = true;
  ++live_;
  return block;
}

void GuardArena::giveBack(void * block) {
  Locked const locked(lock_);
  Page & page = pages_[pageOf(block)];
  Shape const shape(page.size, kPageSize);
  std::size_t const guard = pageOf(block) + shape.pages;
  char * const end = base_ + guard * kPageSize;
  if (!page.live || end - aligned(page.size) != block)
    stop("is freed, but it is none or was freed before", block);
  checkSlack(static_cast<char const *>(block), page.size);
  page.live = false;
  --live_;
  VirtualFree(end - shape.pages * kPageSize, shape.pages * kPageSize, MEM_DECOMMIT);
  putSlot(shape.slotSize, static_cast<std::uint32_t>(guard + 1 - (std::size_t{2} << shape.slotSize)));
}

void GuardArena::checkSlack(char const * block, std::size_t size) const {
  for (std::size_t i = size; i < aligned(size); ++i)
    if (block[i] != kSlackByte)
      stop("was written behind its end", block);
}

} // namespace support
