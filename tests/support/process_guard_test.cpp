#include "support/process_guard.hpp"

#include "support/child_process.hpp"

#include <gtest/gtest.h>

#include <cstdlib>

using support::ProcessGuard;
using support::runChild;

namespace {

bool holds(std::string const & text, std::string const & part) { return text.find(part) != std::string::npos; }

} // namespace

TEST(ProcessGuard, ACrashPrintsCodeAddressAndStack) {
  auto const child = runChild("misbehave.exe", "read-null");
  EXPECT_EQ(child.exitCode, 0xC0000005u);
  EXPECT_TRUE(holds(child.output, "[test] exception 0xC0000005 at misbehave.exe+0x")) << child.output;
  EXPECT_TRUE(holds(child.output, "[test] reading 0x0\n")) << child.output;
  EXPECT_TRUE(holds(child.output, "\n  at misbehave.exe+0x")) << child.output;
  EXPECT_TRUE(holds(child.output, "\n  at kernel32.dll+0x")) << child.output;
}

TEST(ProcessGuard, ACrashFlushesTheStreams) {
  auto const child = runChild("misbehave.exe", "read-null");
  EXPECT_TRUE(holds(child.output, "begun")) << child.output;
}

TEST(ProcessGuard, TheStackOfACallOfNullNamesTheCaller) {
  auto const child = runChild("misbehave.exe", "call-null");
  EXPECT_EQ(child.exitCode, 0xC0000005u);
  EXPECT_TRUE(holds(child.output, "  at 0x0\n  at misbehave.exe+0x")) << child.output;
}

TEST(ProcessGuard, AbortPrintsAStack) {
  auto const child = runChild("misbehave.exe", "abort");
  EXPECT_EQ(child.exitCode, ProcessGuard::kAborted);
  EXPECT_TRUE(holds(child.output, "[test] abort\n  at misbehave.exe+0x")) << child.output;
}

TEST(ProcessGuard, AnUncaughtExceptionPrintsItsTextAndAStack) {
  auto const child = runChild("misbehave.exe", "throw");
  EXPECT_TRUE(holds(child.output, "nobody catches this")) << child.output;
  EXPECT_TRUE(holds(child.output, "  at misbehave.exe+0x")) << child.output;
  EXPECT_NE(child.exitCode, 0u);
}

TEST(ProcessGuard, AProcessThatTakesTooLongEndsWithTheStackOfItsMainThread) {
  _putenv("KIVARA_TEST_TIMEOUT=1");
  auto const child = runChild("misbehave.exe", "hang", 30);
  EXPECT_EQ(child.exitCode, ProcessGuard::kTimedOut);
  EXPECT_TRUE(holds(child.output, "[test] not finished after 1 seconds (KIVARA_TEST_TIMEOUT)")) << child.output;
  EXPECT_TRUE(holds(child.output, "\n  at misbehave.exe+0x")) << child.output;
  EXPECT_TRUE(holds(child.output, "begun")) << child.output;
}

TEST(ProcessGuard, ATimeoutOfZeroNeverEndsTheProcess) {
  _putenv("KIVARA_TEST_TIMEOUT=0");
  EXPECT_EQ(runChild("misbehave.exe", "hang", 2).exitCode, support::kChildTimedOut);
}
