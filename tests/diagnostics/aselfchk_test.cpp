#include "aselfchk.hpp"

#include "tools/winapi.hpp"

#include <gtest/gtest.h>

#include <cstring>
#include <type_traits>

namespace {

static_assert(std::is_default_constructible_v<KivSelfCheck> && std::is_copy_constructible_v<KivSelfCheck>);
static_assert(std::has_virtual_destructor_v<KivSelfCheck>);
static_assert(std::is_invocable_r_v<void, KivSelfCheck const &>);

TEST(SelfCheck, HasNothingButItsDestructor) { EXPECT_EQ(sizeof(KivSelfCheck), sizeof(void *)); }

TEST(SelfCheck, CallingItAnyNumberOfTimesChangesNothing) {
  KivSelfCheck const check;
  char before[sizeof check];
  std::memcpy(before, static_cast<void const *>(&check), sizeof check);
  SetLastError(4711);
  for (int i = 0; i < 1000; ++i)
    check();
  EXPECT_EQ(GetLastError(), 4711u);
  EXPECT_EQ(std::memcmp(before, static_cast<void const *>(&check), sizeof check), 0);
}

/// What a derived class keeps is left alone by an assignment of the base.
struct Counting : KivSelfCheck {
  int count = 0;
};

TEST(SelfCheck, IsCopiedAndAssignedWithoutEffect) {
  Counting first;
  Counting second;
  second.count = 5;
  KivSelfCheck const copy(second);
  copy();
  static_cast<KivSelfCheck &>(second) = first;
  second();
  EXPECT_EQ(second.count, 5);
}

TEST(SelfCheck, IsCalledAndCopiedFromAnotherModule) {
  HMODULE const plug = LoadLibraryA("checking_plug.dll");
  ASSERT_NE(plug, nullptr);
  auto const call =
      reinterpret_cast<void (*)(KivSelfCheck const &)>(reinterpret_cast<void *>(GetProcAddress(plug, "callCheck")));
  ASSERT_NE(call, nullptr);
  Counting check;
  check.count = 7;
  call(check);
  EXPECT_EQ(check.count, 7);
  FreeLibrary(plug);
}

} // namespace
