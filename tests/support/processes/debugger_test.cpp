#include "support/processes/debugger.hpp"

#include "tools/winapi.hpp"

#include <gtest/gtest.h>

using support::DebugAnswer;
using support::DebuggedException;
using support::Debugger;

TEST(Debugger, CollectsDebugTextsInTheirOrder) {
  Debugger debugger({.program = "debug_writer"});
  EXPECT_EQ(debugger.waitForEnd(), 5u);
  EXPECT_EQ(debugger.texts(), (std::vector<std::string>{"first line\n", "", "second \x84line\x93\n"}));
  EXPECT_EQ(debugger.text(), "first line\nsecond \x84line\x93\n");
  EXPECT_TRUE(debugger.waitForText("first"));
  EXPECT_FALSE(debugger.waitForText("third"));
}

TEST(Debugger, GoesOnAfterABreakpoint) {
  Debugger debugger({.program = "crasher", .arguments = "break"});
  EXPECT_EQ(debugger.waitForEnd(), 7u);
  ASSERT_EQ(debugger.exceptions().size(), 1u);
  EXPECT_EQ(debugger.exceptions()[0].code, DWORD{STATUS_BREAKPOINT});
  EXPECT_TRUE(debugger.exceptions()[0].firstChance);
}

TEST(Debugger, PassesFaultsOnToTheProgram) {
  Debugger debugger({.program = "crasher", .arguments = "read"});
  EXPECT_EQ(debugger.waitForEnd(), DWORD{STATUS_ACCESS_VIOLATION});
  ASSERT_EQ(debugger.exceptions().size(), 2u);
  EXPECT_TRUE(debugger.exceptions()[0].firstChance);
  EXPECT_FALSE(debugger.exceptions()[1].firstChance);
}

TEST(Debugger, ARuleCanEndTheProgram) {
  Debugger debugger({.program = "crasher", .arguments = "break"},
                    [](DebuggedException const &) { return DebugAnswer::End; });
  EXPECT_EQ(debugger.waitForEnd(), 1u);
}

TEST(Debugger, CollectsTheOutputToo) {
  Debugger debugger({.program = "crasher", .arguments = "break"});
  debugger.waitForEnd();
  EXPECT_EQ(debugger.process().output(), "ready\r\n");
}

TEST(Debugger, EndsAProgramThatNeverEnds) {
  Debugger debugger({.program = "crasher", .arguments = "hang"});
  EXPECT_TRUE(debugger.process().waitForOutput("ready"));
  EXPECT_TRUE(debugger.process().running());
}

TEST(Debugger, AProgramThatIsNotThereThrows) {
  EXPECT_THROW(Debugger({.program = "no_such_program"}), std::runtime_error);
}
