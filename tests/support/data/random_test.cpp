#include "support/data/random.hpp"

#include "support/processes/child_process.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <stdexcept>

using support::Random;

namespace {

std::vector<std::mt19937::result_type> numbersOf(unsigned seed) {
  Random random(seed);
  return {random(), random(), random()};
}

bool isAskedToFail() {
  auto const arguments = testing::internal::GetArgvs();
  return std::find(arguments.begin(), arguments.end(), "fail-on-purpose") != arguments.end();
}

std::string printedWhenThrown() {
  testing::internal::CaptureStderr();
  try {
    Random const random(5);
    throw std::runtime_error("an exception");
  } catch (std::runtime_error const &) {
    return testing::internal::GetCapturedStderr();
  }
}

} // namespace

TEST(RandomTests, BeginWithTheirOwnSeed) {
  EXPECT_EQ(Random(7)(), std::mt19937(7)());
  EXPECT_EQ(support::Random64(7)(), std::mt19937_64(7)());
}

TEST(RandomTests, BeginElsewhereWithASeedOfTheRun) {
  auto const usual = numbersOf(7);
  _putenv("KIVARA_TEST_SEED=1");
  auto const first = numbersOf(7);
  EXPECT_NE(first, usual);
  EXPECT_NE(first, numbersOf(8));
  EXPECT_EQ(first, numbersOf(7));
  _putenv("KIVARA_TEST_SEED=2");
  EXPECT_NE(first, numbersOf(7));
}

TEST(RandomTests, PrintNothingWithTheirOwnSeed) {
  testing::internal::CaptureStderr();
  numbersOf(7);
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

TEST(RandomTests, PrintASeedOfTheRunAtOnce) {
  _putenv("KIVARA_TEST_SEED=12");
  testing::internal::CaptureStderr();
  Random const random(7);
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "random test 7; the same again: KIVARA_TEST_SEED=12\n");
}

TEST(RandomTests, PrintTheirSeedWhenTheTestFails) {
  if (isAskedToFail()) {
    Random const random(7);
    FAIL();
  }
  auto const child =
      support::runProgram({.program = "support_test",
                           .arguments = "--gtest_filter=RandomTests.PrintTheirSeedWhenTheTestFails fail-on-purpose"});
  EXPECT_EQ(child.exitCode, 1u);
  EXPECT_NE(child.errors.find("random test with its own seed 7"), std::string::npos) << child.errors;
}

TEST(RandomTests, PrintTheirSeedWhenAnExceptionEndsThem) {
  EXPECT_EQ(printedWhenThrown(), "random test with its own seed 5\n");
}

TEST(RandomTests, RunAsOftenAsTheEnvironmentSays) {
  EXPECT_EQ(support::times(30), 30u);
  _putenv("KIVARA_TEST_TIMES=100");
  EXPECT_EQ(support::times(30), 3000u);
}
