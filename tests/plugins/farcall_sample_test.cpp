// The sample "ask" with the module "textservices.dll".

#include "support/processes/child_process.hpp"

#include <gtest/gtest.h>

namespace {

support::ProgramResult ask(std::string const & arguments) {
  return support::runProgram({.program = "ask", .arguments = arguments});
}

TEST(FarCallSample, CallsTheServicesOfAModuleThatItIsNotLinkedWith) {
  EXPECT_EQ(ask("text.words \"one two  three\" textservices.dll").output, "3\r\n");
  EXPECT_EQ(ask("text.upper \"one two\" textservices.dll").output, "ONE TWO\r\n");
  EXPECT_EQ(ask("text.words \"\" textservices.dll").output, "0\r\n");
  EXPECT_EQ(ask("text.upper \"\" textservices.dll").output, "\r\n");
  EXPECT_EQ(ask("text.words one textservices.dll").exitCode, 0u);
}

TEST(FarCallSample, NamesAServiceThatIsNotOffered) {
  support::ProgramResult const unknown = ask("text.lower one textservices.dll");
  EXPECT_EQ(unknown.exitCode, 1u);
  EXPECT_EQ(unknown.output, "");
  EXPECT_EQ(unknown.errors, "ask: no module offers text.lower\r\n");
  EXPECT_EQ(ask("text.words one").errors, "ask: no module offers text.words\r\n");
}

TEST(FarCallSample, NamesAModuleThatCannotBeLoaded) {
  support::ProgramResult const missing = ask("text.words one missing.dll");
  EXPECT_EQ(missing.exitCode, 1u);
  EXPECT_EQ(missing.errors, "ask: cannot load missing.dll\r\n");
}

TEST(FarCallSample, SaysHowItIsUsed) {
  support::ProgramResult const wrong = ask("text.words");
  EXPECT_EQ(wrong.exitCode, 2u);
  EXPECT_EQ(wrong.errors, "usage: ask SERVICE TEXT MODULE...\r\n");
}

} // namespace
