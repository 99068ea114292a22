#include "amemcach.hpp"

#include "support/data/random.hpp"
#include "support/imports/import_hook.hpp"
#include "support/memory/allocation.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <type_traits>
#include <utility>
#include <vector>

namespace {

using Size = unsigned __int64;

/// The header before a block: its capacity.
Size capacityOf(void * block) {
  Size capacity = 0;
  std::memcpy(&capacity, static_cast<char *>(block) - sizeof capacity, sizeof capacity);
  return capacity;
}

/// While support::GuardPages lives: is the block still allocated?
bool isAllocated(void * block) { return support::GuardPages::guards(static_cast<char *>(block) - sizeof(Size)); }

/// Blocks of these capacities from an empty cache, all in use.
std::vector<void *> blocksOf(KivMemCache & cache, std::vector<Size> const & sizes) {
  std::vector<void *> blocks;
  for (Size const size : sizes)
    blocks.push_back(cache.Alloc(size));
  return blocks;
}

void freeAll(KivMemCache & cache, std::vector<void *> const & blocks) {
  for (void * const block : blocks)
    cache.Free(block);
}

/// What the cache gives out one after the other, as capacities, for requests of no bytes.
std::vector<Size> takeOut(KivMemCache & cache, std::size_t count) {
  std::vector<Size> capacities;
  for (std::size_t i = 0; i < count; ++i) {
    void * const block = cache.Alloc(0);
    capacities.push_back(capacityOf(block));
    std::free(static_cast<char *>(block) - sizeof(Size));
  }
  return capacities;
}

TEST(MemCache, TheLargestBlockIsGivenOutEvenIfASmallerOneWouldDo) {
  KivMemCache cache;
  std::vector<void *> const blocks = blocksOf(cache, {100, 1000});
  freeAll(cache, blocks);
  EXPECT_EQ(cache.Alloc(50), blocks[1]);
  EXPECT_EQ(cache.Alloc(50), blocks[0]);
  freeAll(cache, blocks);
}

TEST(MemCache, ABlockGivenOutForLessGoesBackWithItsOwnCapacity) {
  KivMemCache cache;
  std::vector<void *> const blocks = blocksOf(cache, {1000, 500});
  freeAll(cache, blocks);
  EXPECT_EQ(cache.Alloc(50), blocks[0]);
  EXPECT_EQ(capacityOf(blocks[0]), 1000u);
  cache.Free(blocks[0]);
  EXPECT_EQ(cache.Alloc(1000), blocks[0]);
  cache.Free(blocks[0]);
}

TEST(MemCache, ABlockOfExactlyTheSizeServes) {
  KivMemCache cache;
  void * const block = cache.Alloc(1000);
  cache.Free(block);
  EXPECT_EQ(cache.Alloc(1000), block);
  cache.Free(block);
}

TEST(MemCache, ALargerRequestIsANewBlockAndLeavesTheKeptOnes) {
  KivMemCache cache;
  std::vector<void *> const blocks = blocksOf(cache, {100, 1000});
  freeAll(cache, blocks);
  void * const larger = cache.Alloc(1001);
  EXPECT_NE(larger, blocks[0]);
  EXPECT_NE(larger, blocks[1]);
  EXPECT_EQ(capacityOf(larger), 1001u);
  EXPECT_EQ(cache.Alloc(1000), blocks[1]);
  EXPECT_EQ(cache.Alloc(100), blocks[0]);
  cache.Free(larger);
  freeAll(cache, blocks);
}

TEST(MemCache, ABlockOfNoBytesIsValidAndHasNoCapacity) {
  KivMemCache cache;
  void * const block = cache.Alloc(0);
  ASSERT_NE(block, nullptr);
  EXPECT_EQ(capacityOf(block), 0u);
  cache.Free(block);
  EXPECT_EQ(cache.Alloc(0), block);
  cache.Free(block);
}

TEST(MemCache, AllBytesOfABlockAreTheUsers) {
  support::GuardPages const guard;
  KivMemCache cache;
  for (Size const size : {1u, 8u, 4096u, 100000u}) {
    void * const block = cache.Alloc(size);
    std::memset(block, 0xA5, size); // faults where it is not
    EXPECT_EQ(capacityOf(block), size);
    EXPECT_EQ(reinterpret_cast<std::uintptr_t>(cache.Alloc(64 * size)) % 8, 0u);
  }
}

TEST(MemCache, GivesOutByFallingCapacityWhateverTheOrderOfFreeing) {
  std::vector<std::vector<Size>> const orders = {
      {1, 2, 3, 4, 5}, {5, 4, 3, 2, 1}, {3, 1, 5, 2, 4}, {2, 5, 1, 4, 3}, {4, 4, 2, 4, 2}};
  for (std::vector<Size> const & order : orders) {
    KivMemCache cache;
    freeAll(cache, blocksOf(cache, order));
    std::vector<Size> expected = order;
    std::sort(expected.rbegin(), expected.rend());
    EXPECT_EQ(takeOut(cache, order.size()), expected);
  }
}

TEST(MemCache, TheEleventhFreeGoesToTheHeapWhateverTheSize) {
  for (Size const eleventh : {1u, 100000u}) {
    support::GuardPages const guard;
    KivMemCache cache;
    std::vector<void *> const blocks = blocksOf(cache, {10, 20, 30, 40, 50, 60, 70, 80, 90, 100, eleventh});
    freeAll(cache, blocks);
    for (int i = 0; i < 10; ++i)
      EXPECT_TRUE(isAllocated(blocks[static_cast<std::size_t>(i)])) << i;
    EXPECT_FALSE(isAllocated(blocks[10])) << eleventh;
    EXPECT_EQ(cache.Alloc(10), blocks[9]);
    cache.Free(blocks[9]);
  }
}

TEST(MemCache, ItsEndFreesWhatItKeepsAndLeavesWhatIsInUse) {
  support::GuardPages const guard;
  void * used = nullptr;
  std::vector<void *> kept;
  {
    KivMemCache cache;
    used = cache.Alloc(100);
    kept = blocksOf(cache, {200, 300});
    freeAll(cache, kept);
  }
  EXPECT_TRUE(isAllocated(used));
  EXPECT_FALSE(isAllocated(kept[0]));
  EXPECT_FALSE(isAllocated(kept[1]));
  std::free(static_cast<char *>(used) - sizeof(Size));
}

TEST(MemCache, FreeOfNullDoesNothing) {
  KivMemCache cache;
  cache.Free(nullptr);
  void * const block = cache.Alloc(10);
  EXPECT_NE(block, nullptr);
  cache.Free(block);
}

TEST(MemCache, ReuseAllocatesNothing) {
  KivMemCache cache;
  freeAll(cache, blocksOf(cache, {100, 200, 300}));
  support::AllocationCount const count;
  for (int i = 0; i < 100; ++i) {
    void * const first = cache.Alloc(50);
    cache.Free(cache.Alloc(150));
    cache.Free(first);
  }
  EXPECT_EQ(count.value(), 0u);
}

TEST(MemCache, EmptyOnesCanBeCopied) {
  KivMemCache const source;
  KivMemCache copy(source);
  KivMemCache assigned;
  assigned = source;
  void * const block = copy.Alloc(100);
  copy.Free(block);
  EXPECT_EQ(copy.Alloc(100), block);
  EXPECT_NE(assigned.Alloc(100), block);
  copy.Free(block);
}

// Both would free the blocks: users copy empty caches only, as members of what they copy.
TEST(MemCache, ACopySharesTheKeptBlocks) {
  KivMemCache source;
  std::vector<void *> const blocks = blocksOf(source, {100, 1000});
  freeAll(source, blocks);
  KivMemCache copy(source);
  KivMemCache assigned;
  assigned = source;
  for (KivMemCache * const cache : {&source, &copy, &assigned}) {
    EXPECT_EQ(cache->Alloc(0), blocks[1]);
    EXPECT_EQ(cache->Alloc(0), blocks[0]);
  }
  freeAll(source, blocks);
}

TEST(MemCache, TheGeneralOneIsOneForTheProcess) {
  EXPECT_EQ(&KivMemCache::General(), &KivMemCache::General());
  void * const block = KivMemCache::General().Alloc(5000);
  KivMemCache::General().Free(block);
  EXPECT_EQ(KivMemCache::General().Alloc(4000), block);
  KivMemCache::General().Free(block);
}

void * watched = nullptr; ///< a block, with its header

void freeAndTell(void * memory) {
  if (memory == watched)
    std::fputs("the kept block is freed", stderr);
  std::free(memory);
}

void endWithABlockInTheGeneralCache() {
  void * const block = KivMemCache::General().Alloc(5000);
  KivMemCache::General().Free(block);
  watched = static_cast<char *>(block) - sizeof(Size);
  support::replaceImports(GetModuleHandleA("kivara.dll"), "msvcrt.dll",
                          {{"free", reinterpret_cast<void *>(freeAndTell)}});
  std::exit(0);
}

TEST(MemCacheDeathTest, TheGeneralOneIsDestroyedAtTheEndOfTheProcess) {
  testing::FLAGS_gtest_death_test_style = "threadsafe";
  EXPECT_EXIT(endWithABlockInTheGeneralCache(), testing::ExitedWithCode(0), "the kept block is freed");
}

TEST(MemCacheDeathTest, ExhaustedMemoryIsACrashAtTheHeader) {
  testing::FLAGS_gtest_death_test_style = "threadsafe";
  KivMemCache cache;
  for (Size const size : {Size{1} << 62, ~Size{0} - 8, ~Size{0} - 7, ~Size{0}})
    EXPECT_DEATH(cache.Alloc(size), "") << size;
}

/// A cache as a list that is searched from the front.
class Model {
public:
  /// The block that a request is served with; null for a new one.
  void * take(Size size) {
    if (kept_.empty() || kept_.back().capacity < size)
      return nullptr;
    void * const block = kept_.back().address;
    kept_.pop_back();
    return block;
  }

  /// False when the block goes to the heap.
  bool give(void * block, Size capacity) {
    if (kept_.size() == 10)
      return false;
    auto place = kept_.begin();
    while (place != kept_.end() && place->capacity < capacity)
      ++place;
    kept_.insert(place, {block, capacity});
    return true;
  }

private:
  struct Kept {
    void * address;
    Size capacity;
  };
  std::vector<Kept> kept_;
};

/// The cache and the model side by side, with the blocks in use.
class Machine {
public:
  explicit Machine(unsigned seed) : random_(seed) {}

  ~Machine() { freeAll(cache_, used_); }

  void step() {
    if (used_.empty() || (used_.size() < 30 && random_() % 2 == 0))
      alloc(random_() % 8 == 0 ? 0 : random_() % 64 * (random_() % 4 + 1));
    else
      free(random_() % used_.size());
  }

private:
  void alloc(Size size) {
    void * const expected = model_.take(size);
    void * const block = cache_.Alloc(size);
    used_.push_back(block);
    if (expected != nullptr)
      ASSERT_EQ(block, expected);
    else
      ASSERT_EQ(capacityOf(block), size);
    std::memset(block, 0xA5, size);
  }

  void free(std::size_t which) {
    void * const block = used_[which];
    used_.erase(used_.begin() + static_cast<std::ptrdiff_t>(which));
    bool const isKept = model_.give(block, capacityOf(block));
    cache_.Free(block);
    ASSERT_EQ(isAllocated(block), isKept);
  }

  support::Random random_;
  KivMemCache cache_;
  Model model_;
  std::vector<void *> used_;
};

TEST(MemCache, AgreesWithAModelOnAnyWayThroughIt) {
  support::GuardPages const guard;
  Machine machine(1);
  for (std::size_t step = 0; step < support::times(20000) && !testing::Test::HasFatalFailure(); ++step)
    machine.step();
}

TEST(MemBuf, IsEmptyAtFirst) {
  KivMemBuf const buffer;
  EXPECT_EQ(buffer.data, nullptr);
  EXPECT_EQ(buffer.size, 0u);
}

TEST(MemBuf, ItsEndFreesTheBlock) {
  support::GuardPages const guard;
  void * const block = std::malloc(100);
  {
    KivMemBuf buffer;
    buffer.data = block;
    buffer.size = 100;
    EXPECT_TRUE(support::GuardPages::guards(block));
  }
  EXPECT_FALSE(support::GuardPages::guards(block));
}

TEST(MemBuf, MovingHandsTheBlockOn) {
  support::GuardPages const guard;
  void * const block = std::malloc(100);
  KivMemBuf source;
  source.data = block;
  source.size = 100;
  {
    KivMemBuf const target(std::move(source));
    EXPECT_EQ(target.data, block);
    EXPECT_EQ(target.size, 100u);
    EXPECT_EQ(source.data, nullptr);
    EXPECT_EQ(source.size, 0u);
  }
  EXPECT_FALSE(support::GuardPages::guards(block));
}

static_assert(std::has_virtual_destructor_v<KivMemBuf>);
static_assert(!std::is_copy_constructible_v<KivMemBuf> && !std::is_copy_assignable_v<KivMemBuf>,
              "two owners of one block would free it twice");
static_assert(!std::is_polymorphic_v<KivMemCache> && sizeof(KivMemCache) == sizeof(ISequence<void *>));

// Modules that are built at other times read the fields.
TEST(MemBuf, HoldsTheBlockAndThenItsSizeAfterTheTableOfVirtuals) {
  KivMemBuf buffer;
  auto const * const start = reinterpret_cast<char const *>(&buffer);
  EXPECT_EQ(reinterpret_cast<char const *>(&buffer.data) - start, 8);
  EXPECT_EQ(reinterpret_cast<char const *>(&buffer.size) - start, 16);
  EXPECT_EQ(sizeof buffer, 24u);
}

} // namespace
