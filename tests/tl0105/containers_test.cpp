#include "tools/containers.hpp"

#include "tools/string.hpp"

#include <gtest/gtest.h>

#include <type_traits>

using SV::String;

namespace {

int living = 0;

struct Counted {
  Counted() { ++living; }
  ~Counted() { --living; }
};

using Owned = std::map<unsigned short, Counted *>;
using Owner = KivValueDelMap<unsigned short, Counted *, Owned>;

} // namespace

TEST(Sequence, IsClearedAppendedToCountedAndReadByPosition) {
  ISequence<String> texts;
  texts.push_back("one");
  texts.push_back("two");
  EXPECT_EQ(texts.size(), 2u);
  EXPECT_TRUE(texts[1] == "two");
  EXPECT_EQ(&texts[0] + 1, &texts[1]);
  texts.clear();
  EXPECT_TRUE(texts.empty());
}

TEST(Sequence, GrowingMovesItsStringsAndKeepsTheirBlocks) {
  ISequence<String> texts{"text"};
  auto const * const block = texts[0].block();
  for (int i = 0; i < 1000; ++i)
    texts.push_back(String(i));
  EXPECT_EQ(texts[0].block(), block);
  EXPECT_EQ(block->nRefCount, 0u);
}

TEST(KeySortedSet, KeepsUniqueKeysInByteOrder) {
  IKeySortedSet<String, String, std::less<String>> set;
  EXPECT_TRUE(set.insert({"b", "1"}).second);
  EXPECT_TRUE(set.insert({"\xE4", "2"}).second);
  EXPECT_TRUE(set.insert({"B", "3"}).second);
  EXPECT_TRUE(set.insert({"", "4"}).second);
  EXPECT_FALSE(set.insert({"b", "5"}).second);
  String order;
  for (auto const & entry : set)
    order += entry.second;
  EXPECT_STREQ(order.c_str(), "4312");
  ASSERT_NE(set.find("b"), set.end());
  EXPECT_TRUE(set.find("b")->second == "1");
  EXPECT_EQ(set.find("a"), set.end());
  set.clear();
  EXPECT_TRUE(set.empty());
}

TEST(KeySortedSet, KeysThatDifferAfterANulAreOneKey) {
  IKeySortedSet<String, String> set;
  set.insert({String("a\0b", 3), "1"});
  EXPECT_FALSE(set.insert({String("a\0c", 3), "2"}).second);
}

TEST(ValueDelMap, DeletesItsValuesWithItself) {
  {
    Owner map;
    map[1] = new Counted;
    map[2] = new Counted;
    map[3] = nullptr;
    EXPECT_EQ(living, 2);
  }
  EXPECT_EQ(living, 0);
}

TEST(ValueDelMap, DeletesItsValuesWhenEmptied) {
  Owner map;
  map[1] = new Counted;
  map.clear();
  EXPECT_EQ(living, 0);
  EXPECT_TRUE(map.empty());
  map[1] = new Counted;
  EXPECT_EQ(living, 1);
}

// The map that it derives from knows of no ownership, and neither of its operations is virtual.
TEST(ValueDelMap, IsEmptiedThroughItsBaseWithoutDeletingItsValues) {
  Owner map;
  Counted value;
  map[1] = &value;
  static_cast<Owned &>(map).clear();
  EXPECT_TRUE(map.empty());
  EXPECT_EQ(living, 1);
}

TEST(ValueDelMap, DerivesFromTheMapThatItIsGiven) {
  static_assert(std::is_base_of_v<Owned, Owner>);
  static_assert(std::is_base_of_v<std::map<int, Counted *>, KivValueDelMap<int, Counted *>>);
  static_assert(!std::is_copy_constructible_v<Owner> && !std::is_copy_assignable_v<Owner>);
  Owner map;
  map.insert({2, new Counted});
  map.insert({1, new Counted});
  EXPECT_EQ(map.begin()->first, 1);
  EXPECT_EQ(map.find(3), map.end());
}

TEST(ValueDelMap, MovingHandsTheValuesOn) {
  Owner first;
  first[1] = new Counted;
  Owner second(std::move(first));
  EXPECT_EQ(second.size(), 1u);
  {
    Owner third;
    third[7] = new Counted;
    third = std::move(second);
    EXPECT_EQ(third.count(1), 1u);
    EXPECT_EQ(living, 2);
  }
  EXPECT_EQ(living, 1) << "what the third held before";
  second.clear();
  EXPECT_EQ(living, 0);
}
