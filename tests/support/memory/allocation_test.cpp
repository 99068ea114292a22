#include "support/memory/allocation.hpp"

#include "support/processes/child_process.hpp"
#include "tools/string.hpp"

#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>
#include <memory>
#include <new>
#include <stdexcept>
#include <string>
#include <vector>

using support::AllocationCount;
using support::AllocationLimit;
using support::GuardPages;

namespace {

struct Fault {
  char const * deed;
  unsigned long exitCode;
  char const * text;
};

constexpr unsigned long kAccessViolation = 0xC0000005;
constexpr unsigned long kBadFree = 0xE0000001;

#ifdef KIVARA_DEBUG
constexpr Fault kWriteBehindOddSize{"write-behind-odd-size", kBadFree, "was written behind its end"};
#else
constexpr Fault kWriteBehindOddSize{"write-behind-odd-size", kAccessViolation, "[test] writing 0x"};
#endif

void PrintTo(Fault const & fault, std::ostream * out) { *out << fault.deed; }

class GuardPagesFault : public testing::TestWithParam<Fault> {};

} // namespace

TEST_P(GuardPagesFault, EndsTheProcess) {
  auto const child = support::runProgram({.program = "misbehave", .arguments = GetParam().deed});
  EXPECT_EQ(child.exitCode, GetParam().exitCode) << child.errors;
  EXPECT_NE(child.errors.find(GetParam().text), std::string::npos) << child.errors;
}

INSTANTIATE_TEST_SUITE_P(Deeds, GuardPagesFault,
                         testing::Values(Fault{"write-behind-new", kAccessViolation, "[test] writing 0x"},
                                         Fault{"read-behind-calloc", kAccessViolation, "[test] reading 0x"},
                                         kWriteBehindOddSize,
                                         Fault{"write-behind-string-block", kAccessViolation, "[test] writing 0x"},
                                         Fault{"read-after-delete", kAccessViolation, "[test] reading 0x"},
                                         Fault{"read-released-string", kAccessViolation, "[test] reading 0x"},
                                         Fault{"free-twice", kBadFree, "was freed before"},
                                         Fault{"free-the-middle", kBadFree, "is freed, but it is none"}));

TEST(GuardPages, BlocksOfTheProgramAndOfTheDllsAreGuarded) {
  GuardPages const guard;
  auto const byNew = std::make_unique<int>(1);
  void * const byMalloc = std::malloc(10);
  std::string const inLibstdcpp(100, 'x');
  SV::String const text("text");
  EXPECT_TRUE(GuardPages::guards(byNew.get()));
  EXPECT_TRUE(GuardPages::guards(byMalloc));
  EXPECT_TRUE(GuardPages::guards(inLibstdcpp.data()));
  EXPECT_TRUE(GuardPages::guards(text.block()));
  std::free(byMalloc);
}

TEST(GuardPages, BlocksFromBeforeAndAfterAreNotGuardedAndAreFreedAsEver) {
  std::string before(100, 'x');
  std::string inside;
  {
    GuardPages const guard;
    before.clear();
    before.shrink_to_fit();
    inside.assign(100, 'y');
  }
  std::string const after(100, 'z');
  EXPECT_TRUE(GuardPages::guards(inside.data()));
  EXPECT_FALSE(GuardPages::guards(after.data()));
  EXPECT_EQ(inside, std::string(100, 'y'));
}

TEST(GuardPages, ExceptionsPassUnderThem) {
  GuardPages const guard;
  EXPECT_THROW(std::string(5, 'x').at(7), std::out_of_range);
  EXPECT_THROW(throw 'c', char);
}

TEST(GuardPages, ReallocAndCallocKeepTheirMeaning) {
  GuardPages const guard;
  auto * block = static_cast<char *>(std::calloc(3, 5));
  ASSERT_TRUE(GuardPages::guards(block));
  EXPECT_EQ(std::string(block, 15), std::string(15, '\0'));
  std::memcpy(block, "0123456789abcd", 15);
  block = static_cast<char *>(std::realloc(block, 9000));
  EXPECT_STREQ(block, "0123456789abcd");
  block = static_cast<char *>(std::realloc(block, 3));
  EXPECT_EQ(std::string(block, 3), "012");
  std::free(block);
  std::size_t volatile tooMany = SIZE_MAX;
  EXPECT_EQ(std::calloc(tooMany, 2), nullptr);
}

TEST(GuardPages, AHundredThousandBlocksOfAllSizesComeAndGo) {
  GuardPages const guard;
  std::vector<std::unique_ptr<char[]>> blocks(100);
  for (std::size_t i = 0; i < 100'000; ++i) {
    std::size_t const size = i % 1000 == 0 ? i * 10 : i % 300;
    auto & block = blocks[i * 7919 % blocks.size()];
    block.reset(new char[size]);
    std::memset(block.get(), 'x', size);
  }
}

TEST(GuardPages, MoreBlocksThanASystemHasMappingsForAreNotAllGuarded) {
  GuardPages const guard;
  std::vector<std::unique_ptr<char[]>> blocks(70'000);
  for (auto & block : blocks)
    block.reset(new char[10]);
  EXPECT_TRUE(GuardPages::guards(blocks.front().get()));
  EXPECT_FALSE(GuardPages::guards(blocks.back().get()));
  blocks.clear();
  std::unique_ptr<char[]> const next(new char[10]);
  EXPECT_TRUE(GuardPages::guards(next.get()));
}

TEST(AllocationCount, CountsNewAndMallocOfTheProgramAndTheDlls) {
  AllocationCount const count;
  EXPECT_EQ(count.value(), 0u);
  auto const number = std::make_unique<int>(1);
  EXPECT_EQ(count.value(), 1u);
  void * const volatile block = std::malloc(1);
  std::free(block);
  EXPECT_EQ(count.value(), 2u);
  SV::String const text("text");
  EXPECT_EQ(count.value(), 3u);
  std::string const longText(100, 'x');
  EXPECT_EQ(count.value(), 4u);
  SV::String const copy(text);
  EXPECT_EQ(count.value(), 4u);
}

TEST(AllocationLimit, LargerAllocationsFailAndSmallerOnesDoNot) {
  {
    AllocationLimit const limit(1000);
    EXPECT_EQ(std::malloc(1001), nullptr);
    EXPECT_THROW(std::string(2000, 'x'), std::bad_alloc);
    EXPECT_THROW(SV::String::ofLength(2000), std::bad_alloc);
    std::free(std::malloc(1000));
    EXPECT_EQ(std::string(100, 'x').size(), 100u);
  }
  EXPECT_EQ(std::string(2000, 'x').size(), 2000u);
}
