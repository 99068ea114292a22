#include "afarcall.hpp"

#include "plugins/farcall_agreement.hpp"
#include "support/memory/allocation.hpp"
#include "tools/winapi.hpp"

#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>
#include <string>
#include <type_traits>

namespace {

KivFarCallFactory & factory() { return KivFarCallFactory::Instance(); }

/// A buffer that owns one number.
KivMemBuf bufferOf(int number) {
  KivMemBuf buffer;
  buffer.data = std::malloc(sizeof number);
  buffer.size = sizeof number;
  std::memcpy(buffer.data, &number, sizeof number);
  return buffer;
}

int numberIn(KivMemBuf const & buffer) {
  int number = 0;
  EXPECT_EQ(buffer.size, sizeof number);
  std::memcpy(&number, buffer.data, sizeof number);
  return number;
}

std::string textIn(KivMemBuf const & buffer) {
  return {static_cast<char const *>(buffer.data), static_cast<std::size_t>(buffer.size)};
}

KivMemBuf addOne(KivInputData const & input) { return bufferOf(input.number + 1); }
KivMemBuf addTwo(KivInputData const & input) { return bufferOf(input.number + 2); }

/// A result as callers should not pass it: with a block. What happens to that block can be seen.
class FullResult {
public:
  FullResult() {
    buffer.data = &number_;
    buffer.size = sizeof number_;
  }
  ~FullResult() {
    if (isUntouched())
      buffer.data = nullptr;
  }
  bool isUntouched() const { return buffer.data == &number_ && buffer.size == sizeof number_; }

  KivMemBuf buffer;

private:
  int number_ = 0;
};

TEST(FarCalls, ReachTheReceiverOfTheName) {
  EXPECT_TRUE(factory().registerReceiver("one", addOne));
  EXPECT_TRUE(factory().registerReceiver("two", addTwo));
  KivMemBuf first;
  KivMemBuf second;
  EXPECT_TRUE(factory().call("one", {40}, first));
  EXPECT_TRUE(factory().call("two", {40}, second));
  EXPECT_EQ(numberIn(first), 41);
  EXPECT_EQ(numberIn(second), 42);
}

TEST(FarCalls, TheFirstReceiverOfANameStays) {
  EXPECT_TRUE(factory().registerReceiver("name", addOne));
  EXPECT_FALSE(factory().registerReceiver("name", addTwo));
  KivMemBuf result;
  EXPECT_TRUE(factory().call("name", {40}, result));
  EXPECT_EQ(numberIn(result), 41);
}

TEST(FarCalls, NamesDifferByCase) {
  EXPECT_TRUE(factory().registerReceiver("name", addOne));
  FullResult result;
  EXPECT_FALSE(factory().call("Name", {40}, result.buffer));
  EXPECT_TRUE(result.isUntouched());
  EXPECT_TRUE(factory().registerReceiver("NAME", addTwo));
  KivMemBuf other;
  EXPECT_TRUE(factory().call("NAME", {40}, other));
  EXPECT_EQ(numberIn(other), 42);
}

TEST(FarCalls, NamesCountUpToTheirFirstNul) {
  EXPECT_TRUE(factory().registerReceiver(SV::String("name\0one", 8), addOne));
  EXPECT_FALSE(factory().registerReceiver(SV::String("name\0two", 8), addTwo));
  KivMemBuf result;
  EXPECT_TRUE(factory().call("name", {40}, result));
  EXPECT_EQ(numberIn(result), 41);
}

TEST(FarCalls, AnUnknownNameFailsAndLeavesTheResult) {
  FullResult result;
  EXPECT_FALSE(factory().call("unknown", {0}, result.buffer));
  EXPECT_FALSE(factory().call("", {0}, result.buffer));
  EXPECT_TRUE(result.isUntouched());
}

TEST(FarCalls, TheEmptyTextIsANameToo) {
  EXPECT_TRUE(factory().registerReceiver("", addOne));
  KivMemBuf result;
  EXPECT_TRUE(factory().call("", {40}, result));
  EXPECT_EQ(numberIn(result), 41);
}

TEST(FarCalls, ANullReceiverTakesTheNameAndCallsOfItFail) {
  EXPECT_TRUE(factory().registerReceiver("null", nullptr));
  FullResult result;
  EXPECT_FALSE(factory().call("null", {0}, result.buffer));
  EXPECT_TRUE(result.isUntouched());
  EXPECT_FALSE(factory().registerReceiver("null", addOne));
  EXPECT_FALSE(factory().call("null", {0}, result.buffer));
}

// Callers may have lent the result a block that is not from malloc.
TEST(FarCalls, ABlockThatTheResultHeldIsOverwrittenAndNotFreed) {
  support::GuardPages const guard;
  EXPECT_TRUE(factory().registerReceiver("one", addOne));
  KivMemBuf result = bufferOf(7);
  void * const before = result.data;
  EXPECT_TRUE(factory().call("one", {40}, result));
  EXPECT_NE(result.data, before);
  EXPECT_TRUE(support::GuardPages::guards(before));
  std::free(before);
}

TEST(FarCalls, OneRegistryServesTheProcess) {
  EXPECT_EQ(&KivFarCallFactory::Instance(), &KivFarCallFactory::Instance());
  static_assert(!std::is_copy_constructible_v<KivFarCallFactory>);
}

/// With a DLL that neither links this program nor is linked by it.
class FarCallsOfDll : public testing::Test {
protected:
  void SetUp() override { ASSERT_NE(LoadLibraryA("farcall_service.dll"), nullptr); }
};

TEST_F(FarCallsOfDll, CrossTheModules) {
  KivMemBuf result;
  EXPECT_TRUE(factory().call(kEcho, {0, "over there"}, result));
  EXPECT_EQ(textIn(result), "over there");
}

TEST_F(FarCallsOfDll, HandTheVeryBlockOver) {
  support::GuardPages const guard;
  void * block = nullptr;
  {
    KivMemBuf result;
    KivMemBuf told;
    ASSERT_TRUE(factory().call(kEcho, {0, "text"}, result));
    ASSERT_TRUE(factory().call(kLast, {0}, told));
    ASSERT_EQ(told.size, sizeof block);
    std::memcpy(&block, told.data, sizeof block);
    EXPECT_EQ(result.data, block);
    EXPECT_TRUE(support::GuardPages::guards(block));
  }
  EXPECT_FALSE(support::GuardPages::guards(block)); // it belonged to the result alone
}

TEST_F(FarCallsOfDll, AnEmptyAnswerIsAnAnswer) {
  FullResult result;
  EXPECT_TRUE(factory().call(kEmpty, {0}, result.buffer));
  EXPECT_EQ(result.buffer.data, nullptr);
  EXPECT_EQ(result.buffer.size, 0u);
}

TEST_F(FarCallsOfDll, WhatTheReceiverThrowsReachesTheCaller) {
  FullResult result;
  try {
    factory().call(kThrows, {42}, result.buffer);
    ADD_FAILURE() << "nothing was thrown";
  } catch (int number) {
    EXPECT_EQ(number, 42);
  }
  EXPECT_TRUE(result.isUntouched());
}

TEST_F(FarCallsOfDll, AReceiverMayCallBack) {
  EXPECT_TRUE(factory().registerReceiver(kOfProgram, addOne));
  KivMemBuf result;
  EXPECT_TRUE(factory().call(kNested, {40}, result));
  EXPECT_EQ(numberIn(result), 41);
}

TEST_F(FarCallsOfDll, RunOnTheThreadOfTheCaller) {
  EXPECT_TRUE(factory().registerReceiver(
      "thread", [](KivInputData const &) { return bufferOf(static_cast<int>(GetCurrentThreadId())); }));
  KivMemBuf result;
  EXPECT_TRUE(factory().call("thread", {0}, result));
  EXPECT_EQ(numberIn(result), static_cast<int>(GetCurrentThreadId()));
}

} // namespace
