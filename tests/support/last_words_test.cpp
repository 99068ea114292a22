#include "support/child_process.hpp"

#include <gtest/gtest.h>

using support::runProgram;

TEST(LastWords, ACrashPrintsItsCodeAndTheStack) {
  auto const result = runProgram({.program = "bad_end", .arguments = "crash"});
  EXPECT_EQ(result.exitCode, 0xC0000005);
  EXPECT_EQ(result.errors.substr(0, 28), "crash: exception 0xc0000005\r") << result.errors;
  EXPECT_NE(result.errors.find("  bad_end.exe+0x"), std::string::npos) << result.errors;
}

TEST(LastWords, TheWatchdogTellsWhichBoxIsOpenAndEndsTheProcess) {
  auto const result = runProgram({.program = "bad_end", .arguments = "box"});
  EXPECT_EQ(result.exitCode, 99u);
  std::string const box = "  an open box: \"Left open\"\r\n    A question\r\n";
  EXPECT_NE(result.errors.find(box), std::string::npos) << result.errors;
  EXPECT_NE(result.errors.find("  bad_end.exe+0x"), std::string::npos) << result.errors;
}
