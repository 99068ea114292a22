// The sample "saving" of the page on events.

#include "support/processes/child_process.hpp"

#include <gtest/gtest.h>

namespace {

TEST(SavingSample, AsksReportsAndLeaves) {
  auto const result = support::runProgram({.program = "saving", .arguments = "order \"old invoice\" order"});
  EXPECT_EQ(result.exitCode, 1u);
  EXPECT_EQ(result.output, "1 BeforeSaveModel order\r\n"
                           "saving order\r\n"
                           "2 SaveModel order\r\n"
                           "welcome, order\r\n"
                           "3 BeforeSaveModel old invoice\r\n"
                           "refused old invoice\r\n"
                           "4 BeforeSaveModel order\r\n"
                           "saving order\r\n"
                           "5 SaveModel order\r\n"
                           "journal: 5 lines\r\n");
}

TEST(SavingSample, EndsWith0WhenNothingWasRefused) {
  EXPECT_EQ(support::runProgram({.program = "saving", .arguments = "order"}).exitCode, 0u);
}

TEST(SavingSample, SaysHowItIsUsed) {
  auto const result = support::runProgram({.program = "saving"});
  EXPECT_EQ(result.exitCode, 2u);
  EXPECT_EQ(result.errors, "usage: saving MODEL...\r\n");
}

} // namespace
