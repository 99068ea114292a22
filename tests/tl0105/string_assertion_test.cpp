// What String asserts. The DLL stops at a failed assertion in debug form only.

#include "support/processes/child_process.hpp"

#include <gtest/gtest.h>

namespace {

#ifdef KIVARA_DEBUG
constexpr unsigned long kExitCode = 0x80000003; // a breakpoint
#else
constexpr unsigned long kExitCode = 0;
#endif

support::ProgramResult ask(std::string const & what) {
  return support::runProgram({.program = "string_assertions", .arguments = what});
}

bool reports(support::ProgramResult const & child, std::string const & expression) {
  return child.errors.find("[assertion] ") != std::string::npos &&
         child.errors.find("): " + expression) != std::string::npos;
}

char const kHigh[] = "(unsigned long (pString->Len ()) & 0xff000000) != 0xcd000000";
char const kLow[] = "(unsigned long (pString->Len ()) & 0x00ff0000) != 0x00cd0000";

} // namespace

TEST(StringAssertion, ReadingTheLastCharacterOfTheEmptyString) {
  auto const child = ask("last-of-empty");
  EXPECT_TRUE(reports(child, "pData->nLen > 0")) << child.errors;
  EXPECT_EQ(child.exitCode, kExitCode);
}

TEST(StringAssertion, MakingATextUniqueWhoseLengthLooksLikeFreedMemory) {
  auto const high = ask("high");
  EXPECT_TRUE(reports(high, kHigh)) << high.errors;
  EXPECT_FALSE(reports(high, kLow)) << high.errors;
  EXPECT_EQ(high.exitCode, kExitCode);
  auto const low = ask("low");
  EXPECT_TRUE(reports(low, kLow)) << low.errors;
  EXPECT_FALSE(reports(low, kHigh)) << low.errors;
  EXPECT_EQ(low.exitCode, kExitCode);
}

// The pattern is looked for in any length, so real texts of 13,434,880 to 13,500,415 characters are reported too.
TEST(StringAssertion, MakingARealTextOfSuchALengthUniqueIsReportedToo) {
  auto const child = ask("real-low");
  EXPECT_TRUE(reports(child, kLow)) << child.errors;
  EXPECT_EQ(child.exitCode, kExitCode);
}

TEST(StringAssertion, NothingElseIsReported) {
  for (char const * what : {"last", "beside"}) {
    auto const child = ask(what);
    EXPECT_EQ(child.output + child.errors, "");
    EXPECT_EQ(child.exitCode, 0u);
  }
}
