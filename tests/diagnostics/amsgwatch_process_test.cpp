// The record of a process, up to its end and after it.

#include "support/data/files.hpp"
#include "support/processes/child_process.hpp"
#include "tools/winapi.hpp"

#include <gtest/gtest.h>

#include <string>

namespace {

constexpr char kFile[] = "_kiv_hooks.txt";
constexpr char kEnd[] = "# -- [end of program session] ---\n\n";
constexpr char kAdded[] =
    "--- [hooking window 00000010h] --- [first] ---n--- [hooking window 00000020h] --- [second] ---n";
constexpr char kRemoved[] = "--- [unhooked window 00000010h] ------------------------------------\n"
                            "--- [unhooked window 00000020h] ------------------------------------\n";

/// The record as the runtime reads it, with '\n' for each line end.
std::string record() {
  std::string text = support::readFile(kFile).value_or("no file");
  std::erase(text, '\r');
  return text;
}

/// What the process printed; it has to end with 0.
std::string run(char const * words) {
  auto const result = support::runProgram({.program = "message_watch", .arguments = words});
  EXPECT_EQ(result.exitCode, 0u);
  return result.output;
}

TEST(RecordOfMessages, EndsWithTheProcess) {
  run("watch unwatch");
  EXPECT_EQ(record(), std::string(kAdded) + kRemoved + kEnd);
}

TEST(RecordOfMessages, EndsAlsoWhileWindowsAreWatched) {
  run("watch");
  EXPECT_EQ(record(), std::string(kAdded) + kEnd);
}

TEST(RecordOfMessages, IsAppendedToSoThatTheEndSeparatesTheRuns) {
  run("watch");
  run("watch");
  EXPECT_EQ(record(), std::string(kAdded) + kEnd + kAdded + kEnd);
}

TEST(RecordOfMessages, IsNotBegunByAProcessThatAddsNoWindow) {
  run("unwatch");
  EXPECT_EQ(record(), "no file");
}

TEST(RecordOfMessages, TakesNothingAfterTheEndOfTheLibrary) {
  EXPECT_EQ(run("watch late"), "0 no hook\r\n");
  EXPECT_EQ(record(), std::string(kAdded) + kEnd);
}

TEST(RecordOfMessages, GivesTheFormerHookItsPlaceBackAtTheEnd) {
  EXPECT_EQ(run("hook watch late"), "0 former hook\r\n");
  EXPECT_EQ(record(), std::string(kAdded) + kEnd);
}

TEST(RecordOfMessages, ThatCouldNotBeBegunIsNotEndedEitherAndLeavesTheFormerHook) {
  support::TempFolder const folder;
  support::ProgramStart start{
      .program = "message_watch", .arguments = "hook watch late", .workingFolder = folder.path()};
  ASSERT_TRUE(CreateDirectoryA((folder / kFile).c_str(), nullptr));
  auto const result = support::runProgram(start);
  EXPECT_EQ(result.exitCode, 0u);
  EXPECT_EQ(result.output, "1 former hook\r\n") << "the former hook is asked itself, and answers 1";
  ASSERT_TRUE(RemoveDirectoryA((folder / kFile).c_str()));
  EXPECT_FALSE(support::exists(folder / kFile));
}

} // namespace
