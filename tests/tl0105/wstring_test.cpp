#include "tools/wstring.hpp"

#include "support/memory/allocation.hpp"

#include <gtest/gtest.h>

#include <climits>
#include <cstddef>
#include <new>
#include <string>
#include <utility>

using support::GuardPages;
using SV::WString;

namespace {

std::wstring units(WString const & text) { return {text.c_str(), static_cast<std::size_t>(text.Len())}; }

WString ofLength(std::int32_t length) { return WString(std::wstring(static_cast<std::size_t>(length), L'x').c_str()); }

} // namespace

TEST(WString, HasItsOwnEmptyBlock) {
  static_assert(offsetof(SV::StringDataW, aStr) == 8);
  static_assert(sizeof(WString) == sizeof(void *) && sizeof(wchar_t) == 2);
  wchar_t const * const null = nullptr;
  for (WString const & text : {WString(), WString(null), WString(null, 3), WString(L""), WString(L"text", 0),
                               WString(L"text", -1), WString(L'\0'), WString::ofLength(0), WString::ofLength(-1)}) {
    EXPECT_EQ(text.block(), SV::GetEmptyStrDataW());
    EXPECT_EQ(text.Len(), 0);
    EXPECT_STREQ(text.c_str(), L"");
  }
  EXPECT_EQ(SV::GetEmptyStrDataW()->nRefCount, 0u);
}

TEST(WString, IsBuiltFromTextsLengthsAndUnits) {
  EXPECT_EQ(units(WString(L"a\x20AC")), L"a\x20AC");
  EXPECT_EQ(units(WString(L"a\0b", 3)), std::wstring(L"a\0b", 3));
  EXPECT_EQ(units(WString(L"abc", SV::STRING_LEN_TO_NUL)), L"abc");
  EXPECT_EQ(units(WString(L'x')), L"x");
  EXPECT_EQ(SV::h_strlen(L"a\x20AC"), 2);
  EXPECT_EQ(SV::h_strlen(static_cast<wchar_t const *>(nullptr)), 0);
}

TEST(WString, OfALengthIsWrittenInPlace) {
  WString text = WString::ofLength(2);
  EXPECT_EQ(text.c_str()[2], L'\0');
  text.writable()[0] = L'a';
  text.writable()[1] = L'b';
  EXPECT_EQ(units(text), L"ab");
}

TEST(WString, CopiesShareAndTheLastOwnerFrees) {
  GuardPages const guard;
  SV::StringDataW const * block;
  {
    WString const first(L"text");
    block = first.block();
    WString second(first), third;
    third = second;
    EXPECT_EQ(third.block(), block);
    EXPECT_EQ(block->nRefCount, 2u);
    second += L"ure";
    EXPECT_EQ(units(first), L"text");
    EXPECT_EQ(units(second), L"texture");
    EXPECT_EQ(block->nRefCount, 1u);
    WString const fourth(std::move(third));
    EXPECT_EQ(fourth.block(), block);
    EXPECT_EQ(block->nRefCount, 1u);
  }
  EXPECT_FALSE(GuardPages::guards(block));
}

TEST(WString, AssignsInPlaceOnlyForTheSameLengthWhenUnshared) {
  WString text(L"text");
  auto const * block = text.block();
  text = L"sets";
  EXPECT_EQ(text.block(), block);
  WString const other(text);
  text = L"rest";
  EXPECT_NE(text.block(), block);
  EXPECT_EQ(units(other), L"sets");
  block = text.block();
  text.Assign(L"longer", 5);
  EXPECT_NE(text.block(), block);
  EXPECT_EQ(units(text), L"longe");
  text = L"";
  EXPECT_EQ(text.block(), SV::GetEmptyStrDataW());
}

TEST(WString, AppendsInPlaceUpToTheEndOfTheSizeClass) {
  for (std::int32_t bytes : {0x20, 0x40, 0x80, 0x100}) {
    std::int32_t const largest = (bytes - 12) / 2;
    WString text(ofLength(largest - 1));
    auto const * const block = text.block();
    text += L'y';
    EXPECT_EQ(text.block(), block) << bytes;
    text += L"z";
    EXPECT_NE(text.block(), block) << bytes;
    EXPECT_EQ(units(text), std::wstring(static_cast<std::size_t>(largest - 1), L'x') + L"yz");
  }
  WString text(ofLength(123));
  auto const * const block = text.block();
  text += L'x';
  EXPECT_NE(text.block(), block);
}

TEST(WString, AppendingToTheEmptyTextSharesAndAppendingNothingChangesNothing) {
  WString const other(L"text");
  WString text;
  text += other;
  EXPECT_EQ(text.block(), other.block());
  text += L"";
  text += L'\0';
  text += WString();
  text += static_cast<wchar_t const *>(nullptr);
  EXPECT_EQ(text.block(), other.block());
}

TEST(WString, MayBeAppendedToItself) {
  WString text(L"abc");
  text += text;
  text += text.c_str() + 4;
  EXPECT_EQ(units(text), L"abcabcbc");
  text += text;
  EXPECT_EQ(units(text), L"abcabcbcabcabcbc");
}

TEST(WString, SubstringsAreClippedAndTheWholeShares) {
  WString const text(L"abcdef");
  EXPECT_EQ(units(text.substr(1, 2)), L"bc");
  EXPECT_EQ(units(text.substr(4)), L"ef");
  EXPECT_EQ(text.substr(0, 99).block(), text.block());
  for (auto [start, count] : {std::pair{6, 1}, {0, 0}, {-1, 2}, {0, -1}, {INT_MAX, INT_MAX}, {INT_MIN, INT_MIN}})
    EXPECT_EQ(text.substr(start, count).block(), SV::GetEmptyStrDataW());
}

TEST(WString, UnitsAreReadByPosition) {
  WString const text(L"a\x20AC");
  EXPECT_EQ(text.charAt(1), L'\x20AC');
  for (std::int32_t outside : {2, -1, INT_MAX, INT_MIN})
    EXPECT_EQ(text.charAt(outside), L'\0');
}

TEST(WString, MakeUniqueCopiesASharedBlockOnly) {
  WString text(L"text");
  auto const * const block = text.block();
  text.makeUnique();
  EXPECT_EQ(text.block(), block);
  WString const other(text);
  text.makeUnique();
  text.writable()[0] = L'n';
  EXPECT_EQ(units(text), L"next");
  EXPECT_EQ(units(other), L"text");
}

TEST(WString, EqualMeansLengthAndUnits) {
  EXPECT_TRUE(WString(L"ab") == L"ab");
  EXPECT_TRUE(WString(L"ab") != L"a\x0162");
  EXPECT_TRUE(WString(L"a\0b", 3) != L"a");
  EXPECT_TRUE(WString() == L"");
}

TEST(WString, AFailedAllocationLeavesEverythingAsItWas) {
  WString const longText(ofLength(3000));
  WString text(L"text");
  auto const * const block = text.block();
  {
    support::AllocationLimit const limit(1000);
    EXPECT_THROW(text += longText, std::bad_alloc);
    EXPECT_THROW(text = longText.c_str(), std::bad_alloc);
    EXPECT_THROW(WString(longText).makeUnique(), std::bad_alloc);
  }
  EXPECT_EQ(text.block(), block);
  EXPECT_EQ(units(text), L"text");
  EXPECT_EQ(longText.block()->nRefCount, 0u);
}
