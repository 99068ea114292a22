#include "support/harness/process_guard.hpp"

#include "support/processes/child_process.hpp"

#include <gtest/gtest.h>

#include <cstdlib>

using support::ProcessGuard;
using support::runProgram;

namespace {

bool holds(std::string const & text, std::string const & part) { return text.find(part) != std::string::npos; }

support::ProgramResult misbehave(std::string const & deed) {
  return runProgram({.program = "misbehave", .arguments = deed});
}

} // namespace

TEST(ProcessGuard, ACrashPrintsCodeAddressAndStack) {
  auto const child = misbehave("read-null");
  EXPECT_EQ(child.exitCode, 0xC0000005u);
  EXPECT_TRUE(holds(child.errors, "[test] exception 0xC0000005 at misbehave.exe+0x")) << child.output;
  EXPECT_TRUE(holds(child.errors, "[test] reading 0x0\n")) << child.output;
  EXPECT_TRUE(holds(child.errors, "\n  at misbehave.exe+0x")) << child.output;
  EXPECT_TRUE(holds(child.errors, "\n  at kernel32.dll+0x")) << child.output;
}

TEST(ProcessGuard, ACrashFlushesTheStreams) {
  auto const child = misbehave("read-null");
  EXPECT_TRUE(holds(child.output, "begun")) << child.output;
}

TEST(ProcessGuard, TheStackOfACallOfNullNamesTheCaller) {
  auto const child = misbehave("call-null");
  EXPECT_EQ(child.exitCode, 0xC0000005u);
  EXPECT_TRUE(holds(child.errors, "  at 0x0\n  at misbehave.exe+0x")) << child.output;
}

TEST(ProcessGuard, AbortPrintsAStack) {
  auto const child = misbehave("abort");
  EXPECT_EQ(child.exitCode, ProcessGuard::kAborted);
  EXPECT_TRUE(holds(child.errors, "[test] abort\n  at misbehave.exe+0x")) << child.output;
}

TEST(ProcessGuard, AnUncaughtExceptionPrintsItsTextAndAStack) {
  auto const child = misbehave("throw");
  EXPECT_TRUE(holds(child.errors, "nobody catches this")) << child.output;
  EXPECT_TRUE(holds(child.errors, "  at misbehave.exe+0x")) << child.output;
  EXPECT_NE(child.exitCode, 0u);
}

TEST(ProcessGuard, AProcessThatTakesTooLongEndsWithTheStackOfItsMainThread) {
  _putenv("KIVARA_TEST_TIMEOUT=1");
  auto const child = misbehave("hang");
  EXPECT_EQ(child.exitCode, ProcessGuard::kTimedOut);
  EXPECT_TRUE(holds(child.errors, "[test] not finished after 1 seconds (KIVARA_TEST_TIMEOUT)")) << child.output;
  EXPECT_TRUE(holds(child.errors, "\n  at misbehave.exe+0x")) << child.output;
  EXPECT_TRUE(holds(child.output, "begun")) << child.output;
}

TEST(ProcessGuard, ABoxThatIsNotAnsweredIsReported) {
  _putenv("KIVARA_TEST_TIMEOUT=3");
  auto const child = misbehave("box");
  EXPECT_EQ(child.exitCode, ProcessGuard::kTimedOut);
  EXPECT_TRUE(holds(child.errors, "  an open box: \"Left open\"\n    A question\n")) << child.errors;
}

TEST(ProcessGuard, ATimeoutOfZeroNeverEndsTheProcess) {
  _putenv("KIVARA_TEST_TIMEOUT=0");
  support::ChildProcess const child({.program = "misbehave", .arguments = "hang"});
  EXPECT_FALSE(child.waitUpTo(2).has_value());
}
