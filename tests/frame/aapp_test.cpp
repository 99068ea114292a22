#include "aapp.hpp"

#include "acmdline.hpp"
#include "aplatfrm.hpp"
#include "frame/recording_application.hpp"
#include "locale/ainter_state.hpp"
#include "sv/help.hpp"
#include "sv/imagepool.hpp"
#include "sv/resource.hpp"
#include "tools/winapi.hpp"

#include <gtest/gtest.h>

#include <cstdio>
#include <fstream>
#include <process.h>
#include <sstream>
#include <string>
#include <vector>

using kivtest::RecordingApplication;
using Steps = std::vector<std::string>;

namespace {

/// Runs Main as the entry routine would, with these words behind the program.
void runMain(RecordingApplication & application, std::vector<std::string> const & words = {}) {
  static std::vector<std::string> text;
  static std::vector<char *> argv;
  text = words;
  text.insert(text.begin(), "tool.exe");
  argv.clear();
  for (std::string & word : text)
    argv.push_back(word.data());
  application.Main(static_cast<int>(argv.size()), argv.data());
}

std::string contents(char const * name) {
  std::ifstream file(name, std::ios::binary);
  std::ostringstream text;
  text << file.rdbuf();
  return text.str();
}

TEST(Application, RunsItsStepsInOrder) {
  RecordingApplication application;
  runMain(application);
  EXPECT_EQ(application.steps(), (Steps{"prepare", "resource 0x200290b", "resource 0x2002922", "resource 0x2002923",
                                        "resource 0x2002924", "run"}));
}

TEST(Application, ReadsTheCommandLineBeforeItPrepares) {
  RecordingApplication application;
  std::string seen;
  application.onPrepare = [&] {
    seen = KivCmdline::Instance().getValue("seen").c_str();
    return 0;
  };
  runMain(application, {"-seenyes", "-trace"});
  EXPECT_EQ(seen, "yes");
  EXPECT_TRUE(KivCmdline::doTracing());
}

TEST(Application, RefusedPreparationSkipsTheRunButNotTheEnd) {
  RecordingApplication application;
  application.onPrepare = [] { return 7; };
  std::atexit([] { std::printf("after main: %d\n", KivApplicationInterface::IsAfterMain()), std::fflush(stdout); });
  EXPECT_EXIT(
      {
        runMain(application);
        std::abort();
      },
      testing::ExitedWithCode(7), "");
}

TEST(Application, WithoutAnObjectHasNoGUIAndNoEnd) {
  EXPECT_FALSE(KivApplicationInterface::IsWithGUI());
  EXPECT_FALSE(KivApplicationInterface::IsAfterMain());
}

} // namespace
