#include "atrace.hpp"

#include "sv/application.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <sstream>
#include <string>
#include <thread>

namespace {

std::string contents(char const * name) {
  std::ifstream file(name);
  std::ostringstream text;
  text << file.rdbuf();
  return text.str();
}

/// Tracing into a file, which can be read at any time: lines are not left in the stream's buffer.
class Trace : public testing::Test {
protected:
  void SetUp() override {
    stream_ = std::fopen("trace.txt", "wt");
    ASSERT_NE(stream_, nullptr);
    Kiv_TraceSetHandle(stream_);
    Kiv_EnableTracing(true);
  }
  void TearDown() override {
    Kiv_TraceSetHandle(nullptr);
    std::fclose(stream_);
  }
  static std::string text() { return contents("trace.txt"); }

  FILE * stream_ = nullptr;
};

TEST(Tracing, IsOffAtStart) { EXPECT_FALSE(Kiv_IsTracingEnabled()); }

TEST(Tracing, IsSwitchedOnAndOff) {
  Kiv_EnableTracing(true);
  EXPECT_TRUE(Kiv_IsTracingEnabled());
  Kiv_EnableTracing(false);
  EXPECT_FALSE(Kiv_IsTracingEnabled());
}

TEST_F(Trace, WritesTheFormattedTextAndALineEnd) {
  Kiv_Trace("%s has %d lines", "report.txt", 7);
  EXPECT_EQ(text(), "report.txt has 7 lines\n");
}

TEST_F(Trace, FlushesEachLine) {
  Kiv_Trace("first");
  EXPECT_EQ(text(), "first\n");
  Kiv_Trace("second");
  EXPECT_EQ(text(), "first\nsecond\n");
}

TEST_F(Trace, ReadsFormatsAsTheRuntimeDoes) {
  char const * volatile format = "%I64d %e"; // unknown to the compiler, which warns of what is not in the standard
  Kiv_Trace(format, 5'000'000'000LL, 1.5);
  EXPECT_EQ(text(), "5000000000 1.500000e+000\n");
}

TEST_F(Trace, HasNoLimitOfLength) {
  std::string const most(100'000, 'x');
  Kiv_Trace("%s", most.c_str());
  EXPECT_EQ(text(), most + "\n");
}

TEST_F(Trace, ANullFormatIsAnEmptyLine) {
  char const * volatile format = nullptr;
  Kiv_Trace(format);
  EXPECT_EQ(text(), "\n");
}

TEST_F(Trace, HasThePositionBeforeOneLineOnly) {
  Kiv_TraceSetSourceInfo("amodule.cpp", 246);
  Kiv_Trace("first");
  Kiv_Trace("second");
  EXPECT_EQ(text(), "amodule.cpp [246]: first\nsecond\n");
}

TEST_F(Trace, ALaterPositionReplacesAnEarlierOne) {
  Kiv_TraceSetSourceInfo("afirst.cpp", 1);
  Kiv_TraceSetSourceInfo("asecond.cpp", -2);
  Kiv_Trace("line");
  EXPECT_EQ(text(), "asecond.cpp [-2]: line\n");
}

TEST_F(Trace, ANullFileTakesThePositionBack) {
  Kiv_TraceSetSourceInfo("amodule.cpp", 1);
  Kiv_TraceSetSourceInfo(nullptr, 2);
  Kiv_Trace("line");
  EXPECT_EQ(text(), "line\n");
}

TEST_F(Trace, DoesNotCopyThePosition) {
  char file[] = "afirst.cpp";
  Kiv_TraceSetSourceInfo(file, 1);
  file[1] = 'F';
  Kiv_Trace("line");
  EXPECT_EQ(text(), "aFirst.cpp [1]: line\n");
}

TEST_F(Trace, SwitchedOffWritesNothingAndKeepsThePosition) {
  Kiv_TraceSetSourceInfo("amodule.cpp", 246);
  Kiv_EnableTracing(false);
  Kiv_Trace("unseen");
  EXPECT_EQ(text(), "");
  Kiv_EnableTracing(true);
  Kiv_Trace("seen");
  EXPECT_EQ(text(), "amodule.cpp [246]: seen\n");
}

TEST_F(Trace, SwitchedOffDoesNotLookAtTheFormat) {
  Kiv_EnableTracing(false);
  Kiv_Trace(reinterpret_cast<char const *>(std::size_t{16}));
  EXPECT_EQ(text(), "");
}

TEST_F(Trace, BeginsWithTheCallersOwnPlace) {
  KIV_TRACE_HERE(), Kiv_Trace("here");
  EXPECT_EQ(text(), __FILE__ " [" + std::to_string(__LINE__ - 1) + "]: here\n");
}

TEST_F(Trace, AnotherStreamFlushesTheFormerOne) {
  std::fputs("left in the buffer", stream_);
  EXPECT_EQ(text(), "");
  FILE * const other = std::fopen("other.txt", "wt");
  Kiv_TraceSetHandle(other);
  EXPECT_EQ(text(), "left in the buffer");
  Kiv_Trace("line");
  EXPECT_EQ(contents("other.txt"), "line\n");
  Kiv_TraceSetHandle(nullptr);
  std::fclose(other);
}

TEST_F(Trace, OfSeveralThreadsLosesNoCharacter) {
  constexpr int lines = 300;
  auto const write = [](char const * word) {
    for (int i = 0; i < lines; ++i)
      Kiv_Trace("%s", word);
  };
  std::thread first(write, "ab");
  std::thread second(write, "cde");
  first.join();
  second.join();
  std::string const all = text();
  for (char const c : {'a', 'b', 'c', 'd', 'e'})
    EXPECT_EQ(std::count(all.begin(), all.end(), c), lines) << c;
  EXPECT_EQ(std::count(all.begin(), all.end(), '\n'), 2 * lines);
}

TEST_F(Trace, NullIsStdoutAndNotSilence) {
  Kiv_TraceSetHandle(nullptr);
  testing::internal::CaptureStdout();
  Kiv_Trace("a line of output");
  EXPECT_EQ(testing::internal::GetCapturedStdout(), "a line of output\n");
  EXPECT_EQ(text(), "");
}

TEST(Tracing, GoesToStdoutWhereNoStreamWasSet) {
  Kiv_EnableTracing(true);
  testing::internal::CaptureStdout();
  Kiv_TraceSetSourceInfo("amodule.cpp", 1);
  Kiv_Trace("a line of output");
  EXPECT_EQ(testing::internal::GetCapturedStdout(), "amodule.cpp [1]: a line of output\n");
}

TEST_F(Trace, TheCounterHasNoEffect) {
  for (int i = 0; i < 3; ++i)
    Kiv_DecTraceCounter();
  Kiv_Trace("below");
  for (int i = 0; i < 9; ++i)
    Kiv_IncTraceCounter();
  Kiv_Trace("above");
  EXPECT_EQ(text(), "below\nabove\n");
}

TEST(DeadNetwork, IsAFlag) {
  EXPECT_FALSE(Kiv_IsDeadNet());
  Kiv_SetDeadNet(true);
  EXPECT_TRUE(Kiv_IsDeadNet());
  Kiv_SetDeadNet(false);
  EXPECT_FALSE(Kiv_IsDeadNet());
}

TEST(DebugOutput, ANullTextIsIgnored) { KivDebugOut(nullptr); }

// Without an application object; dialogs are suppressed, so that a box would be a mistake of the code.
TEST(Assertion, UnderSuppressionAnswers0AndReturns) {
  SV::Application::SetModalDialogSuppression(true);
  EXPECT_EQ(KIV_Assert_Fail("amodule.cpp", 1, "count > 0", "the count"), 0);
}

TEST(Assertion, TakesNullAndTextsOfAnyLength) {
  SV::Application::SetModalDialogSuppression(true);
  std::string const most(20'000, 'x');
  EXPECT_EQ(KIV_Assert_Fail(nullptr, -1, nullptr, nullptr), 0);
  EXPECT_EQ(KIV_Assert_Fail(most.c_str(), 1, most.c_str(), most.c_str()), 0);
}

TEST(Assertion, ThatHoldsEvaluatesItsConditionOnceAtTheMost) {
  int count = 0;
  KIV_ASSERT(++count < 5, "the count");
  EXPECT_LE(count, 1);
  EXPECT_EQ(count == 1, KIV_ASSERTIONS_ENABLED());
}

TEST(HeapCheck, TakesNullAndTextsOfAnyLength) {
  Kiv_DoHeapCheck(nullptr, -1, nullptr);
  Kiv_DoHeapCheck(std::string(5000, 'x').c_str(), 1, "ignored");
}

} // namespace
