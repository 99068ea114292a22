// What Fct_CreateCallstack would do after the name: the process has ended by then, so its steps are compiled in here.

#include "diagnostics/crash/callstack.hpp"

#include "diagnostics/crash/report.hpp"
#include "support/data/files.hpp"

#include <gtest/gtest.h>

#include <string>

using namespace kivara::crash;

namespace {

class Callstack : public testing::Test {
protected:
  Callstack() { _putenv("KIVDUMP_NO_ENCRYPT=1"); }

  std::string text() const { return support::readFile(name_).value_or("(no file)"); }

  support::TempFolder const folder_;
  std::string const name_ = folder_ / "_kiv.minidump.amodule.cpp.246.txt";
};

TEST_F(Callstack, IsTheSilentSectionOnTheStack) {
  testing::internal::CaptureStdout();
  writeCallstack("amodule.cpp", 246, name_.c_str());
  EXPECT_EQ(testing::internal::GetCapturedStdout(), "Creating minidump for amodule.cpp(246)\n");
  EXPECT_EQ(text(), "\r\n");
  EXPECT_EQ(dumpState().report, INVALID_HANDLE_VALUE);
}

TEST_F(Callstack, DropsWhatTheFileHeldTheFirstTimeOfAPlaceAndIsAppendedAfterThat) {
  support::writeFile(name_, "of another run\r\n");
  writeCallstack("amodule.cpp", 246, name_.c_str());
  EXPECT_EQ(text(), "\r\n");
  writeCallstack("amodule.cpp", 246, name_.c_str());
  EXPECT_EQ(text(), "\r\n\r\n");
  writeCallstack("amodule.cpp", 247, name_.c_str());
  EXPECT_EQ(text(), "\r\n") << "another line is another place";
  writeCallstack("bmodule.cpp", 247, name_.c_str());
  EXPECT_EQ(text(), "\r\n") << "and so is another file";
}

TEST_F(Callstack, ClosesTheReportThatIsOpen) {
  std::string const report = folder_ / "report.txt";
  ASSERT_TRUE(openReport(report.c_str(), CREATE_ALWAYS));
  writeCallstack("amodule.cpp", 246, name_.c_str());
  EXPECT_EQ(support::readFile(report), "");
  EXPECT_EQ(dumpState().report, INVALID_HANDLE_VALUE);
  EXPECT_EQ(text(), "\r\n");
}

TEST_F(Callstack, WithoutAFileIsNone) {
  support::FileInUse const held(name_);
  writeCallstack("amodule.cpp", 246, name_.c_str());
  EXPECT_EQ(dumpState().report, INVALID_HANDLE_VALUE);
}

TEST_F(Callstack, IsScrambledUnlessTheEnvironmentSaysOtherwise) {
  _putenv("KIVDUMP_NO_ENCRYPT=");
  writeCallstack("amodule.cpp", 246, name_.c_str());
  EXPECT_EQ(text().size(), 2u);
  EXPECT_NE(text(), "\r\n");
  EXPECT_TRUE(dumpState().scramble);
}

} // namespace
