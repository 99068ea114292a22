// Which block a String has, who shares it, and when it goes.

#include "support/memory/allocation.hpp"
#include "tools/string.hpp"

#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <utility>

using support::AllocationCount;
using support::GuardPages;
using SV::String;

namespace {

String ofLength(std::int32_t length) { return String(std::string(static_cast<std::size_t>(length), 'x').c_str()); }

/// Blocks whose length plus 12 is the end of a size class.
constexpr std::int32_t kLargestOfClass[] = {0x20 - 12, 0x40 - 12, 0x80 - 12, 0x100 - 12};

} // namespace

TEST(StringBlock, HoldsLengthOwnersAndTheText) {
  static_assert(offsetof(SV::StringData, nLen) == 0);
  static_assert(offsetof(SV::StringData, nRefCount) == 4);
  static_assert(offsetof(SV::StringData, aStr) == 8);
  static_assert(sizeof(String) == sizeof(void *));
  String const text("text");
  EXPECT_EQ(text.block()->nLen, 4);
  EXPECT_EQ(text.block()->nRefCount, 0u);
  EXPECT_STREQ(text.block()->aStr, "text");
  EXPECT_EQ(text.c_str(), text.block()->aStr);
}

TEST(StringBlock, TheEmptyOneIsNeverCountedAndNeverFreed) {
  AllocationCount const count;
  auto const * const empty = SV::GetEmptyStrData();
  for (int i = 0; i < 1000; ++i) {
    String a, b(a), c("");
    b = a;
    c = std::move(b);
    c += a;
    c.makeUnique();
    EXPECT_EQ(c.block(), empty);
    EXPECT_EQ(c.block()->nRefCount, 0u);
  }
  EXPECT_EQ(empty->nLen, 0);
  EXPECT_EQ(empty->aStr[0], '\0');
  EXPECT_EQ(count.value(), 0u);
}

TEST(StringBlock, CopiesShareItAndCountTheFurtherOwners) {
  AllocationCount const count;
  String const first("text");
  ASSERT_EQ(count.value(), 1u);
  {
    String const second(first);
    String third;
    third = second;
    EXPECT_EQ(second.block(), first.block());
    EXPECT_EQ(third.block(), first.block());
    EXPECT_EQ(first.block()->nRefCount, 2u);
    third = third;
    EXPECT_EQ(first.block()->nRefCount, 2u);
  }
  EXPECT_EQ(first.block()->nRefCount, 0u);
  EXPECT_EQ(count.value(), 1u);
}

TEST(StringBlock, MovingHandsItOn) {
  String first("text");
  auto const * const block = first.block();
  String second(std::move(first));
  EXPECT_EQ(second.block(), block);
  EXPECT_EQ(block->nRefCount, 0u);
  String third("other");
  third = std::move(second);
  EXPECT_EQ(third.block(), block);
  EXPECT_EQ(block->nRefCount, 0u);
  auto & same = third;
  third = std::move(same);
  EXPECT_STREQ(third.c_str(), "text");
}

TEST(StringBlock, SwappingExchangesItWithAllItsOwners) {
  String first("text"), second, other(first);
  auto const * const block = first.block();
  support::AllocationCount const count;
  first.swap(second);
  EXPECT_EQ(first.Len(), 0);
  EXPECT_EQ(second.block(), block);
  EXPECT_EQ(block->nRefCount, 1u);
  swap(second, other); // two owners of one block
  EXPECT_EQ(block->nRefCount, 1u);
  second.swap(second);
  EXPECT_STREQ(second.c_str(), "text");
  EXPECT_EQ(count.value(), 0u);
}

TEST(StringBlock, TheLastOwnerFreesIt) {
  GuardPages const guard;
  SV::StringData const * block;
  {
    String const first("text");
    block = first.block();
    { String const second(first); }
    EXPECT_TRUE(GuardPages::guards(block));
  }
  EXPECT_FALSE(GuardPages::guards(block));
}

TEST(StringBlock, TheCountersHighestBitIsNoOwner) {
  GuardPages const guard;
  SV::StringData * const block = SV::CreateStringData("text", 4);
  String text;
  {
    String probe("text");
    const_cast<SV::StringData *>(probe.block())->nRefCount = 0x80000001;
    text = probe;
    EXPECT_EQ(text.block()->nRefCount, 0x80000002u);
    const_cast<SV::StringData *>(probe.block())->nRefCount = 0x80000001;
  }
  EXPECT_EQ(text.block()->nRefCount, 0x80000000u);
  auto const * const shared = text.block();
  text = String();
  EXPECT_FALSE(GuardPages::guards(shared));
  SV::DeleteStringData(block);
  EXPECT_FALSE(GuardPages::guards(block));
}

TEST(StringBlock, CreatedFromOutsideTakesAnyLength) {
  for (std::int32_t length : {0, -1, -0x7FFFFFFF}) {
    SV::StringData * const block = SV::CreateStringData("text", length);
    EXPECT_EQ(block->nLen, 0);
    EXPECT_EQ(block->aStr[0], '\0');
    SV::DeleteStringData(block);
  }
}

TEST(StringBlock, IsOverwrittenInPlaceForTheSameLengthWhenUnshared) {
  String text("text");
  auto const * const block = text.block();
  text = "sets";
  EXPECT_EQ(text.block(), block);
  EXPECT_STREQ(text.c_str(), "sets");
  text.Assign("abcdef", 4);
  EXPECT_EQ(text.block(), block);
  EXPECT_STREQ(text.c_str(), "abcd");
}

TEST(StringBlock, IsReplacedForAnotherLengthOrWhenShared) {
  GuardPages const guard;
  String text("text");
  auto const * block = text.block();
  text = "tex";
  EXPECT_NE(text.block(), block);
  EXPECT_FALSE(GuardPages::guards(block));
  block = text.block();
  String const other(text);
  text = "set";
  EXPECT_NE(text.block(), block);
  EXPECT_STREQ(other.c_str(), "tex");
  EXPECT_EQ(other.block()->nRefCount, 0u);
  text = "";
  EXPECT_EQ(text.block(), SV::GetEmptyStrData());
}

TEST(StringBlock, AssigningAStringSharesEvenForTheSameLength) {
  String text("text");
  String const other("sets");
  text = other;
  EXPECT_EQ(text.block(), other.block());
}

TEST(StringBlock, AppendingToTheEmptyStringSharesTheOther) {
  String const other("text");
  String text;
  text += other;
  EXPECT_EQ(text.block(), other.block());
  EXPECT_EQ(other.block()->nRefCount, 1u);
  EXPECT_EQ((String() + other).block(), other.block());
  EXPECT_EQ(("" + other).block(), other.block());
  EXPECT_EQ((other + String()).block(), other.block());
  EXPECT_EQ((other + "").block(), other.block());
}

TEST(StringBlock, AppendingNothingLeavesItShared) {
  String const other("text");
  String text(other);
  text += "";
  text += '\0';
  text += String();
  text += static_cast<char const *>(nullptr);
  EXPECT_EQ(text.block(), other.block());
}

TEST(StringBlock, AppendingToACopyLeavesTheFirstUnchanged) {
  String const first("text");
  String copy(first);
  EXPECT_EQ(copy.block(), first.block());
  EXPECT_EQ(first.block()->nRefCount, 1u);
  copy += "ure";
  EXPECT_STREQ(first.c_str(), "text");
  EXPECT_STREQ(copy.c_str(), "texture");
  EXPECT_EQ(first.block()->nRefCount, 0u);
  EXPECT_EQ(copy.block()->nRefCount, 0u);
}

TEST(StringBlock, NineteenCharactersTakeOneMoreInPlaceAndTheNextOneMoves) {
  String text("0123456789012345678");
  ASSERT_EQ(text.Len() + 12, 31);
  auto const * const block = text.block();
  text += 'x';
  EXPECT_EQ(text.block(), block);
  text += 'y';
  EXPECT_NE(text.block(), block);
  EXPECT_EQ(text.Len() + 12, 33);
  EXPECT_STREQ(text.c_str(), "0123456789012345678xy");
}

TEST(StringBlock, AppendingStaysInPlaceUpToTheEndOfTheSizeClass) {
  for (std::int32_t largest : kLargestOfClass) {
    String text(ofLength(largest - 1));
    auto const * block = text.block();
    text += 'y';
    EXPECT_EQ(text.block(), block) << largest;
    text += 'z';
    EXPECT_NE(text.block(), block) << largest;
    EXPECT_EQ(std::string(text.c_str()), std::string(static_cast<std::size_t>(largest - 1), 'x') + "yz");
  }
}

TEST(StringBlock, AppendingFromTheSmallestToTheLargestLengthOfAClassStaysInPlace) {
  std::int32_t smallest = 1;
  for (std::int32_t largest : kLargestOfClass) {
    for (std::int32_t added : {largest - smallest, largest - smallest + 1}) {
      String text(ofLength(smallest));
      auto const * const block = text.block();
      text += ofLength(added);
      EXPECT_EQ(text.block() == block, smallest + added == largest) << smallest << " + " << added;
      EXPECT_EQ(std::string(text.c_str()), std::string(static_cast<std::size_t>(smallest + added), 'x'));
    }
    smallest = largest + 1;
  }
}

TEST(StringBlock, AboveTheLastClassEachAppendMoves) {
  String text(ofLength(245));
  for (int i = 0; i < 20; ++i) {
    auto const * const block = text.block();
    text += 'x';
    EXPECT_NE(text.block(), block);
  }
  EXPECT_EQ(text.Len(), 265);
}

TEST(StringBlock, ASharedOneIsNotAppendedInPlace) {
  String text("text");
  auto const * const block = text.block();
  String const other(text);
  text += 'x';
  EXPECT_NE(text.block(), block);
  EXPECT_EQ(other.block(), block);
  EXPECT_EQ(block->nRefCount, 0u);
}

TEST(StringBlock, TheWholeTextAsSubstringOrTokenSharesIt) {
  String const text("text");
  EXPECT_EQ(text.substr(0, 4).block(), text.block());
  EXPECT_EQ(text.substr(0, 99).block(), text.block());
  EXPECT_EQ(text.substr(0).block(), text.block());
  EXPECT_EQ(text.token(0, ';').block(), text.block());
  EXPECT_NE(text.substr(0, 3).block(), text.block());
  EXPECT_NE(text.substr(1, 4).block(), text.block());
}

TEST(StringBlock, MakeUniqueCopiesASharedOneOnly) {
  String text("text");
  auto const * const block = text.block();
  text.makeUnique();
  EXPECT_EQ(text.block(), block);
  String const other(text);
  text.makeUnique();
  EXPECT_NE(text.block(), block);
  EXPECT_EQ(block->nRefCount, 0u);
  text.writable()[0] = 'n';
  EXPECT_STREQ(text.c_str(), "next");
  EXPECT_STREQ(other.c_str(), "text");
}

TEST(StringBlock, ChangingInPlaceMakesItUniqueFirst) {
  String const first("text");
  void (*const changes[])(String &) = {[](String & text) { text.replaceAll('t', 's'); },
                                       [](String & text) { text.replaceAll('y', 'z'); },
                                       [](String & text) { text.toLower(); }, [](String & text) { text.toUpper(); }};
  for (auto change : changes) {
    String text(first);
    change(text);
    EXPECT_NE(text.block(), first.block());
    EXPECT_STREQ(first.c_str(), "text");
    auto const * const own = text.block();
    change(text);
    EXPECT_EQ(text.block(), own);
  }
}

TEST(StringBlock, ErasingWhatIsNotThereLeavesItShared) {
  String const first("text");
  String text(first);
  EXPECT_EQ(text.EraseAllChars('y').block(), first.block());
  text.EraseAllChars('t');
  EXPECT_STREQ(text.c_str(), "ex");
  EXPECT_STREQ(first.c_str(), "text");
  EXPECT_EQ(first.block()->nRefCount, 0u);
}

TEST(StringBlock, CopyingComparingAndReadingAllocateNothing) {
  String const text(ofLength(64)), other(ofLength(64));
  AllocationCount const count;
  String const copy(text);
  String const whole(copy.substr(0));
  EXPECT_TRUE(text == other);
  EXPECT_FALSE(text < other);
  EXPECT_EQ(whole.charAt(63), 'x');
  EXPECT_EQ(count.value(), 0u);
}
