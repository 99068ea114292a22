#include "atrace.hpp"

#include "support/imports/import_hook.hpp"
#include "tools/winapi.hpp"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <ostream>

namespace {

constexpr std::size_t kPage = 4096;

/// Pages of one kind, followed by pages of another kind.
class Pages {
public:
  explicit Pages(DWORD kind, DWORD kindBehind = PAGE_NOACCESS)
      : base_(static_cast<char *>(VirtualAlloc(nullptr, 2 * kPage, MEM_RESERVE | MEM_COMMIT, PAGE_READWRITE))) {
    std::memset(base_, 'x', 2 * kPage);
    DWORD before = 0;
    VirtualProtect(base_, kPage, kind, &before);
    VirtualProtect(base_ + kPage, kPage, kindBehind, &before);
  }
  Pages(Pages const &) = delete;
  Pages & operator=(Pages const &) = delete;
  ~Pages() { VirtualFree(base_, 0, MEM_RELEASE); }

  char * first() const { return base_; }
  /// So many bytes before the end of the first page.
  char * beforeEnd(std::size_t bytes) const { return base_ + kPage - bytes; }

private:
  char * base_;
};

/// A page at an address whose lower half is given, whatever the upper half; null when the system has none free.
char * pageAt(std::uint32_t lowerHalf) {
  for (std::uintptr_t upper = 2; upper < 200; ++upper) {
    auto * const wanted = reinterpret_cast<void *>(upper << 32 | lowerHalf);
    if (void * const page = VirtualAlloc(wanted, kPage, MEM_RESERVE | MEM_COMMIT, PAGE_READWRITE))
      return static_cast<char *>(page);
  }
  return nullptr;
}

void * freedPage() {
  void * const page = VirtualAlloc(nullptr, kPage, MEM_RESERVE | MEM_COMMIT, PAGE_READWRITE);
  VirtualFree(page, 0, MEM_RELEASE);
  return page;
}

TEST(Readable, NullIsNot) {
  EXPECT_FALSE(Kiv_MemoryIsReadable(nullptr, 1));
  EXPECT_FALSE(Kiv_MemoryIsReadable(nullptr, 0));
}

TEST(Readable, OrdinaryMemoryIs) {
  int value = 0;
  EXPECT_TRUE(Kiv_MemoryIsReadable(&value, sizeof value));
  EXPECT_TRUE(Kiv_MemoryIsReadable("literal", 8));
}

TEST(Readable, ALengthOf0IsWhateverThePages) {
  Pages const pages(PAGE_READWRITE);
  EXPECT_TRUE(Kiv_MemoryIsReadable(pages.first(), 0));
  EXPECT_TRUE(Kiv_MemoryIsReadable(pages.beforeEnd(0), 0));
}

TEST(Readable, ReadOnlyPagesAre) {
  Pages const pages(PAGE_READONLY);
  EXPECT_TRUE(Kiv_MemoryIsReadable(pages.first(), kPage));
}

TEST(Readable, PagesWithoutAccessAreNot) {
  Pages const pages(PAGE_NOACCESS);
  EXPECT_FALSE(Kiv_MemoryIsReadable(pages.first(), 1));
}

TEST(Readable, ARangeIsUpToTheLastByteOfItsPages) {
  Pages const pages(PAGE_READWRITE);
  EXPECT_TRUE(Kiv_MemoryIsReadable(pages.beforeEnd(16), 16));
  EXPECT_FALSE(Kiv_MemoryIsReadable(pages.beforeEnd(16), 17));
}

TEST(Readable, FreedPagesAreNot) {
  void * const page = VirtualAlloc(nullptr, kPage, MEM_RESERVE | MEM_COMMIT, PAGE_READWRITE);
  EXPECT_TRUE(Kiv_MemoryIsReadable(page, kPage));
  VirtualFree(page, 0, MEM_RELEASE);
  EXPECT_FALSE(Kiv_MemoryIsReadable(page, 1));
}

TEST(Readable, PagesThatAreOnlyReservedAreNot) {
  void * const page = VirtualAlloc(nullptr, kPage, MEM_RESERVE, PAGE_READWRITE);
  EXPECT_FALSE(Kiv_MemoryIsReadable(page, 1));
  EXPECT_FALSE(Kiv_MemoryIsWriteable(page, 1));
  EXPECT_FALSE(Kiv_MemoryIsString(static_cast<char *>(page)));
  VirtualFree(page, 0, MEM_RELEASE);
}

TEST(Readable, AGuardPageIsNotAndIsNotUsedUp) {
  Pages const pages(PAGE_READWRITE | PAGE_GUARD);
  EXPECT_FALSE(Kiv_MemoryIsReadable(pages.first(), 1));
  EXPECT_FALSE(Kiv_MemoryIsReadable(pages.first(), 1));
}

TEST(Readable, ARangeThatEndsInAGuardPageIsNot) {
  Pages const pages(PAGE_READWRITE, PAGE_READWRITE | PAGE_GUARD);
  EXPECT_TRUE(Kiv_MemoryIsReadable(pages.beforeEnd(16), 16));
  EXPECT_FALSE(Kiv_MemoryIsReadable(pages.beforeEnd(16), 17));
}

TEST(Readable, ARangeThatEndsAfterAllMemoryIsNot) {
  int value = 0;
  EXPECT_FALSE(Kiv_MemoryIsReadable(&value, static_cast<std::size_t>(-1) / 2));
}

TEST(Writeable, NullIsNot) { EXPECT_FALSE(Kiv_MemoryIsWriteable(nullptr, 0)); }

TEST(Writeable, OrdinaryMemoryIsAndKeepsItsBytes) {
  Pages const pages(PAGE_READWRITE);
  EXPECT_TRUE(Kiv_MemoryIsWriteable(pages.first(), kPage));
  EXPECT_EQ(pages.first()[0], 'x');
  EXPECT_EQ(pages.beforeEnd(1)[0], 'x');
}

TEST(Writeable, ReadOnlyPagesAreNot) {
  Pages const pages(PAGE_READONLY);
  EXPECT_FALSE(Kiv_MemoryIsWriteable(pages.first(), 1));
}

TEST(Writeable, ALengthOf0IsInReadOnlyPagesToo) {
  Pages const pages(PAGE_READONLY);
  EXPECT_TRUE(Kiv_MemoryIsWriteable(pages.first(), 0));
}

TEST(Writeable, FreedPagesAreNot) { EXPECT_FALSE(Kiv_MemoryIsWriteable(freedPage(), 1)); }

TEST(Writeable, PagesWithoutAccessAreNot) {
  Pages const pages(PAGE_NOACCESS);
  EXPECT_FALSE(Kiv_MemoryIsWriteable(pages.first(), 1));
}

TEST(Writeable, ARangeThatEndsInReadOnlyPagesIsNot) {
  Pages const pages(PAGE_READWRITE, PAGE_READONLY);
  EXPECT_TRUE(Kiv_MemoryIsWriteable(pages.beforeEnd(16), 16));
  EXPECT_FALSE(Kiv_MemoryIsWriteable(pages.beforeEnd(16), 17));
}

TEST(Writeable, AGuardPageIsNotAndIsNotUsedUp) {
  Pages const pages(PAGE_READWRITE | PAGE_GUARD);
  EXPECT_FALSE(Kiv_MemoryIsWriteable(pages.first(), 1));
  EXPECT_FALSE(Kiv_MemoryIsWriteable(pages.first(), 1));
}

// Callers print optional texts without asking first.
TEST(Text, NullIsOne) { EXPECT_TRUE(Kiv_MemoryIsString(nullptr)); }

TEST(Text, WithANULIsOne) {
  EXPECT_TRUE(Kiv_MemoryIsString(""));
  EXPECT_TRUE(Kiv_MemoryIsString("text"));
  Pages const pages(PAGE_READWRITE);
  *pages.beforeEnd(1) = '\0';
  EXPECT_TRUE(Kiv_MemoryIsString(pages.beforeEnd(16)));
}

TEST(Text, InReadOnlyPagesIsOne) {
  Pages const pages(PAGE_READWRITE);
  *pages.beforeEnd(1) = '\0';
  DWORD before = 0;
  VirtualProtect(pages.first(), kPage, PAGE_READONLY, &before);
  EXPECT_TRUE(Kiv_MemoryIsString(pages.first()));
}

TEST(Text, ThatRunsOverSeveralKindsOfPagesIsOne) {
  Pages const pages(PAGE_READWRITE, PAGE_READWRITE);
  *(pages.first() + kPage + 300) = '\0';
  DWORD before = 0;
  VirtualProtect(pages.first(), kPage, PAGE_READONLY, &before);
  EXPECT_TRUE(Kiv_MemoryIsString(pages.beforeEnd(16)));
}

TEST(Text, InFreedPagesIsNone) { EXPECT_FALSE(Kiv_MemoryIsString(static_cast<char *>(freedPage()))); }

void * takenAwayPage = nullptr;

/// Answers as the system does, and takes a page away when all is known of it, as another thread may do at any moment.
SIZE_T WINAPI queryAndTakeAway(void const * address, MEMORY_BASIC_INFORMATION * region, SIZE_T size) {
  SIZE_T const answer = VirtualQuery(address, region, size);
  DWORD before = 0;
  if ((region->Protect & PAGE_GUARD) != 0)
    VirtualProtect(takenAwayPage, kPage, PAGE_NOACCESS, &before);
  return answer;
}

TEST(Text, ThatAnotherThreadTakesAwayMeanwhileIsNone) {
  Pages const pages(PAGE_READWRITE, PAGE_READWRITE | PAGE_GUARD);
  *pages.beforeEnd(1) = '\0';
  EXPECT_TRUE(Kiv_MemoryIsString(pages.first()));
  takenAwayPage = pages.first();
  support::replaceImports(GetModuleHandleA("kivara.dll"), "KERNEL32.dll",
                          {{"VirtualQuery", reinterpret_cast<void *>(queryAndTakeAway)}});
  EXPECT_FALSE(Kiv_MemoryIsString(pages.first()));
}

BOOL WINAPI refuseToRead(HANDLE, void const *, void *, SIZE_T, SIZE_T *) { return FALSE; }

// As when another thread gives the pages back. Wine still reads such pages.
TEST(Text, ThatTheSystemRefusesToReadIsNone) {
  Pages const pages(PAGE_READWRITE, PAGE_READWRITE | PAGE_GUARD);
  *pages.beforeEnd(1) = '\0';
  support::replaceImports(GetModuleHandleA("kivara.dll"), "KERNEL32.dll",
                          {{"ReadProcessMemory", reinterpret_cast<void *>(refuseToRead)}});
  EXPECT_FALSE(Kiv_MemoryIsString(pages.first()));
}

TEST(Text, ThatRunsIntoPagesWithoutAccessIsNone) {
  Pages const pages(PAGE_READWRITE);
  EXPECT_FALSE(Kiv_MemoryIsString(pages.beforeEnd(16)));
}

TEST(Text, ThatRunsIntoAGuardPageIsNone) {
  Pages const pages(PAGE_READWRITE, PAGE_READWRITE | PAGE_GUARD);
  EXPECT_FALSE(Kiv_MemoryIsString(pages.beforeEnd(16)));
  *pages.beforeEnd(1) = '\0';
  EXPECT_TRUE(Kiv_MemoryIsString(pages.beforeEnd(16)));
}

TEST(Text, InAGuardPageIsNone) {
  Pages const pages(PAGE_READWRITE | PAGE_GUARD);
  EXPECT_FALSE(Kiv_MemoryIsString(pages.first()));
}

TEST(Text, InPagesWithoutAccessIsNone) {
  Pages const pages(PAGE_NOACCESS);
  EXPECT_FALSE(Kiv_MemoryIsString(pages.first()));
}

struct PoisonRow {
  std::uint32_t pattern;
};
std::ostream & operator<<(std::ostream & out, PoisonRow const & row) { return out << std::hex << row.pattern; }

class Poison : public testing::TestWithParam<PoisonRow> {
protected:
  static void expect(std::uint32_t lowerHalf, bool isGood) {
    char * const page = pageAt(lowerHalf);
    ASSERT_NE(page, nullptr);
    EXPECT_EQ(Kiv_MemoryIsReadable(page, 1), isGood) << static_cast<void *>(page);
    EXPECT_EQ(Kiv_MemoryIsWriteable(page, 1), isGood) << static_cast<void *>(page);
    EXPECT_EQ(Kiv_MemoryIsString(page), isGood) << static_cast<void *>(page);
    VirtualFree(page, 0, MEM_RELEASE);
  }
};

TEST_P(Poison, IsFoundEvenWhereThereIsMemory) { expect(GetParam().pattern, false); }

TEST_P(Poison, IsNotFoundBesideThePattern) {
  expect(GetParam().pattern - 0x10000, true);
  expect(GetParam().pattern + 0x10000, true);
}

TEST_P(Poison, IsFoundWhateverTheOtherDigits) {
  for (std::uintptr_t const upper : {0x0ull, 0x1ull, 0x7FFFull, 0xCDCDCDCDull, 0xFFFFFFFFull})
    for (std::uint32_t const low : {0x0000u, 0x1234u, 0xFFFFu}) {
      auto * const pointer = reinterpret_cast<char *>(upper << 32 | GetParam().pattern | low);
      EXPECT_FALSE(Kiv_MemoryIsReadable(pointer, 0)) << static_cast<void *>(pointer);
      EXPECT_FALSE(Kiv_MemoryIsWriteable(pointer, 0)) << static_cast<void *>(pointer);
      EXPECT_FALSE(Kiv_MemoryIsString(pointer)) << static_cast<void *>(pointer);
    }
}

INSTANTIATE_TEST_SUITE_P(Patterns, Poison,
                         testing::Values(PoisonRow{0xCCCC0000}, PoisonRow{0xCDCD0000}, PoisonRow{0xDDDD0000},
                                         PoisonRow{0xFDFD0000}));

} // namespace
