#include "aappinfo.hpp"
#include "frame/product_run.hpp"
#include "support/processes/console.hpp"

#include <gtest/gtest.h>

#include <ostream>

using support::ConsoleView;

namespace {

using Lines = std::vector<std::string>;

char const * const kEndLine = "[kiv] Application shutdown event recognized";

/// A run of frame_console, started without streams as from the desktop and seen from inside of its console.
struct ConsoleRun {
  explicit ConsoleRun(std::string const & control)
      : run(support::ProgramStart{.program = "frame_console", .arguments = "-console", .withoutStreams = true},
            {{"CONTROL", control}}),
        console((run.waitForRecord("console 1, window 1"), run.child().processId())) {}

  /// What stands at the console, but for the languages that the start finds.
  Lines lines() const {
    Lines all = console.lines();
    std::erase_if(all, [](std::string const & line) { return line.starts_with("[locale] "); });
    return all;
  }

  /// Lets the program go on.
  void go() { support::writeFile(run.path("go"), ""); }

  ProductRun run;
  ConsoleView console;
};

TEST(DynamicConsole, IsThereOnlyWithTheOption) {
  ProductRun run("frame_console", "-consolex -Console");
  EXPECT_TRUE(run.waitForRecord("console 0, window 0"));
  support::writeFile(run.path("go"), "");
  EXPECT_EQ(run.exitCode(), 0u);
  EXPECT_EQ(run.child().output(), "a line of output\r\n");
}

TEST(DynamicConsole, HasTheBuildInItsTitle) {
  ConsoleRun console("");
  std::string const build = Kiv_GetBuildVersionString().c_str();
  EXPECT_EQ(console.console.title(), "[KIVARA " + build + "] - dynamic console");
}

TEST(DynamicConsole, ShowsBothOutputStreams) {
  ConsoleRun console("");
  console.go();
  EXPECT_EQ(console.run.exitCode(), 0u);
  EXPECT_EQ(console.lines(), (Lines{"a line of output", "a line of errors", kEndLine}));
}

TEST(DynamicConsole, IsTheStandardInput) {
  ConsoleRun console("read");
  console.go();
  console.console.type("typed\r");
  EXPECT_TRUE(console.run.waitForRecord("read typed"));
  EXPECT_EQ(console.run.exitCode(), 0u);
}

TEST(DynamicConsole, LeavesTheStreamsWhereTheyAreWhenTheRuntimeRefusesItsHandles) {
  ProductRun run("frame_console", "-console", {{"HANDLELESS", "1"}});
  support::writeFile(run.path("go"), "");
  EXPECT_EQ(run.exitCode(), 0u);
  EXPECT_TRUE(run.waitForRecord("console 1, window 1"));
  EXPECT_NE(run.child().output().find("a line of output\r\n"), std::string::npos) << run.child().output();
}

TEST(DynamicConsole, WithoutOneTheProcessEndsByAFatalMessage) {
  ProductRun run("frame_console", "-console", {{"TAKEN", "1"}});
  EXPECT_EQ(run.answerBox().texts, Lines{"AllocConsole failed"});
  run.exitCode();
  EXPECT_EQ(run.record(), Lines{"fatal 4711 AllocConsole failed"});
}

TEST(DynamicConsole, HasItsHandlerBeforeItsListenerAndLosesBothBeforeItIsFreed) {
  ProductRun run("frame_console", "-console", {{"END", "1"}});
  support::writeFile(run.path("go"), "");
  EXPECT_EQ(run.exitCode(), 0u);
  EXPECT_EQ(run.record(), (Lines{"handler added: 1, listener is heard: 0", "prepareApplication", "runApplication",
                                 "console 1, window 1", "listener is there: 1", "destroyed",
                                 "handler added: 0, listener is heard: 0", "console freed, listener is there: 0"}));
}

struct Event {
  char const * control;
  char const * line; ///< null: nothing is printed
  bool ends;
};
std::ostream & operator<<(std::ostream & out, Event const & event) { return out << event.control; }

class ControlEventAtAConsole : public testing::TestWithParam<Event> {};
TEST_P(ControlEventAtAConsole, PrintsItsLineAndEndsTheProgramOrNot) {
  Event const & event = GetParam();
  ConsoleRun console(event.control);
  console.go();
  EXPECT_EQ(console.run.exitCode(), event.ends ? 1u : 0u);
  Lines expected;
  if (event.line)
    expected.push_back(event.line);
  if (!event.ends)
    expected.insert(expected.end(), {"a line of output", "a line of errors"});
  expected.push_back(kEndLine);
  EXPECT_EQ(console.lines(), expected);
  // What is to run at exit has run, however the end came.
  EXPECT_EQ(console.run.record().back(), "destroyed");
}
INSTANTIATE_TEST_SUITE_P(Events, ControlEventAtAConsole,
                         testing::Values(Event{"0", "[exception] Ctrl+C was pressed", false},
                                         Event{"1", "[exception] Crtl+Break was pressed", false},
                                         Event{"2", "[exception] Close Event received", false},
                                         Event{"5", "[exception] LogOff Event received", true},
                                         Event{"6", "[exception] ShutDown Event received", true},
                                         Event{"3", nullptr, true}, Event{"7", nullptr, true}));

// Wine raises no Ctrl+Break; its event is among the ones above.
TEST(DynamicConsole, CtrlCOfTheUserLetsTheProgramRunOn) {
  ConsoleRun console("c read");
  console.go();
  support::eventually([&] { return !console.lines().empty(); });
  EXPECT_EQ(console.lines(), Lines{"[exception] Ctrl+C was pressed"});
  console.console.type("\r");
  EXPECT_EQ(console.run.exitCode(), 0u);
}

} // namespace
