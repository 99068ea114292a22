#include "tools/assert.hpp"

#include "tools/winapi.hpp"

#include <gtest/gtest.h>

#include <string>

namespace {

/// What the system raises to hand a text to the debugger, with the text's length and address.
constexpr DWORD kTextForDebugger = 0x40010006;

int stops = 0;
std::string debuggerText;

/// Takes the text for the debugger; counts the stop that debug builds make and goes on after it.
LONG CALLBACK passStop(EXCEPTION_POINTERS * exception) {
  if (exception->ExceptionRecord->ExceptionCode == kTextForDebugger)
    debuggerText += reinterpret_cast<char const *>(exception->ExceptionRecord->ExceptionInformation[1]);
  if (exception->ExceptionRecord->ExceptionCode != EXCEPTION_BREAKPOINT)
    return EXCEPTION_CONTINUE_SEARCH;
  ++stops;
  auto const instruction = reinterpret_cast<unsigned char const *>(exception->ContextRecord->Rip);
  if (*instruction == 0xCC)
    ++exception->ContextRecord->Rip;
  return EXCEPTION_CONTINUE_EXECUTION;
}

class Assertion : public testing::Test {
protected:
  void SetUp() override {
    stops = 0;
    debuggerText.clear();
    handler_ = AddVectoredExceptionHandler(1, passStop);
    testing::internal::CaptureStderr();
  }
  void TearDown() override { RemoveVectoredExceptionHandler(handler_); }

  static std::string written() { return testing::internal::GetCapturedStderr(); }

private:
  void * handler_ = nullptr;
};

#ifdef KIVARA_DEBUG
constexpr int kStopsPerFailure = 1;
#else
constexpr int kStopsPerFailure = 0;
#endif

} // namespace

TEST_F(Assertion, WritesNothingWhenTheConditionHolds) {
  SV::SV_CheckAssert(true, "a == b", "message", "file.cpp", 12);
  SV::SV_CheckAssert(true, nullptr, nullptr, nullptr, 0);
  EXPECT_EQ(written(), "");
  EXPECT_EQ(debuggerText, "");
  EXPECT_EQ(stops, 0);
}

TEST_F(Assertion, FailureWritesOneLineWithExpressionMessageFileAndLine) {
  SV::SV_CheckAssert(false, "a == b", "counts differ", "file.cpp", 4294967295ul);
  EXPECT_EQ(written(), "[assertion] file.cpp (4294967295): a == b: counts differ\n");
}

TEST_F(Assertion, FailureGivesTheDebuggerTheSameLine) {
  SV::SV_CheckAssert(false, "a == b", "counts differ", "file.cpp", 12);
  EXPECT_EQ(debuggerText, "[assertion] file.cpp (12): a == b: counts differ\n");
  written();
}

TEST_F(Assertion, FailureStopsInTheDebuggerInDebugBuildsOnly) {
  SV::SV_CheckAssert(false, "a == b", nullptr, "file.cpp", 1);
  EXPECT_EQ(stops, kStopsPerFailure);
  written();
}

TEST_F(Assertion, NullMessageIsLeftOut) {
  SV::SV_CheckAssert(false, "pData->nLen > 0", nullptr, "file.cpp", 7);
  EXPECT_EQ(written(), "[assertion] file.cpp (7): pData->nLen > 0\n");
}

TEST_F(Assertion, NullExpressionAndFileAreReportedAsUnknown) {
  SV::SV_CheckAssert(false, nullptr, nullptr, nullptr, 0);
  EXPECT_EQ(written(), "[assertion] ? (0): ?\n");
}

TEST_F(Assertion, PercentSignsAreNoFormats) {
  SV::SV_CheckAssert(false, "%s%n", "100%", "%d.cpp", 1);
  EXPECT_EQ(written(), "[assertion] %d.cpp (1): %s%n: 100%\n");
}

TEST_F(Assertion, LongTextsAreCutToOneLine) {
  std::string const longText(5000, 'x');
  SV::SV_CheckAssert(false, longText.c_str(), longText.c_str(), longText.c_str(), 1);
  auto const line = written();
  EXPECT_LT(line.size(), 1024u);
  EXPECT_EQ(line.find('\n'), line.size() - 1);
}

TEST_F(Assertion, LineBreaksInTheTextsStayOnTheOneLine) {
  SV::SV_CheckAssert(false, "a\n== b", "two\r\nlines", "file.cpp", 3);
  EXPECT_EQ(written(), "[assertion] file.cpp (3): a == b: two  lines\n");
}

TEST_F(Assertion, TheMacroReportsExpressionAndPlace) {
  SV_CHECK(1 > 2, "1 > 2");
  unsigned const line = __LINE__ - 1;
  EXPECT_NE(written().find("assertion_test.cpp (" + std::to_string(line) + "): 1 > 2\n"), std::string::npos);
}
