#include "aentry.hpp"

#include "acmdline.hpp"
#include "frame/box_watch.hpp"
#include "frame/frame_run.hpp"
#include "frame/recording_application.hpp"
#include "support/imports/import_spy.hpp"
#include "support/memory/allocation.hpp"
#include "sv/sysdepen.hpp"

#include <gtest/gtest.h>

using kivtest::BoxWatch;
using kivtest::RecordingApplication;

namespace {

int enter() {
  char commandLine[] = "";
  return Kiv_ToolkitEntry(GetModuleHandleA(nullptr), nullptr, commandLine, SW_SHOWMINIMIZED);
}

TEST(Entry, RunsTheApplicationObjectAndAnswers0) {
  RecordingApplication application;
  std::string program;
  application.onRun = [&] { return program = KivCmdline::Instance().getParam(0).c_str(), 0; };
  EXPECT_EQ(enter(), 0);
  EXPECT_EQ(application.steps().back(), "run");
  EXPECT_NE(program.find("frame_run_test"), std::string::npos) << program;
}

TEST(Entry, HandsTheProcessFactsToTheToolkit) {
  RecordingApplication application;
  enter();
  EXPECT_EQ(SV::Sysdepen::GethInst(), GetModuleHandleA(nullptr));
  EXPECT_EQ(SV::Sysdepen::GetThreadId(), GetCurrentThreadId());
  EXPECT_EQ(SV::Sysdepen::GetShowCommand(), SW_SHOWMINIMIZED);
}

TEST(Entry, ReleasesTheWordsInOneBlockOnceTheToolkitIsDown) {
  static void const * words = nullptr; // spies outlive their test
  static std::vector<std::string> notes;
  class WordKeeper : public RecordingApplication {
    void Main(int argc, char ** const argv) override {
      words = argv;
      RecordingApplication::Main(argc, argv);
    }
  } application;
  support::spyOnImport("kivara.dll", "DeInitSV",
                       [](support::SpiedCall const &) { notes.emplace_back("toolkit down"); });
  support::spyOnImport("kivara.dll", "free", [](support::SpiedCall const & call) {
    if (words != nullptr && call.text(0) == words)
      notes.emplace_back("words released");
  });
  EXPECT_EQ(enter(), 0);
  EXPECT_EQ(notes, (std::vector<std::string>{"toolkit down", "words released"}));
  words = nullptr;
}

TEST(Entry, WithoutAnApplicationObjectSaysSoAndAnswers1) {
  BoxWatch watch;
  EXPECT_EQ(enter(), 1);
  ASSERT_EQ(watch.boxes().size(), 1u);
  EXPECT_EQ(watch.boxes()[0].title, "Severe SV error");
  EXPECT_EQ(watch.boxes()[0].text,
            "Severe error: No instance of class application (aSVData.pApp)!\n\nPlease contact your vendor!");
}

TEST(Entry, WithAToolkitThatDoesNotComeUpSaysSoAndAnswers1) {
  RecordingApplication application;
  // The toolkit cannot register a window class that is there already.
  WNDCLASSA taken = {};
  taken.lpfnWndProc = DefWindowProcA;
  taken.hInstance = GetModuleHandleA(nullptr);
  taken.lpszClassName = "SV0105.Listener";
  ASSERT_NE(RegisterClassA(&taken), 0);
  BoxWatch watch;
  EXPECT_EQ(enter(), 1);
  ASSERT_EQ(watch.boxes().size(), 1u);
  EXPECT_EQ(watch.boxes()[0].title, "Severe SV error");
  EXPECT_EQ(watch.boxes()[0].text, "Severe error: failed to init program (InitSV)!\n\nPlease contact your vendor!");
  EXPECT_TRUE(application.steps().empty());
}

TEST(Entry, WithoutMemoryForTheCommandLineAnswers1AndRunsNothing) {
  RecordingApplication application;
  support::AllocationLimit const limit(0);
  EXPECT_EQ(enter(), 1);
  EXPECT_TRUE(application.steps().empty());
}

TEST(Entry, UnderSuppressionThatAConstructorHasSetSaysItInTheLog) {
  SV::Application::SetModalDialogSuppression(true);
  SV::Application::SetModalDialogSuppressionLogfileName("dialogs.txt");
  BoxWatch watch;
  EXPECT_EQ(enter(), 1);
  EXPECT_TRUE(watch.boxes().empty());
  EXPECT_EQ(kivtest::contents("dialogs.txt"),
            "Severe error: No instance of class application (aSVData.pApp)!\r\n\r\nPlease contact your vendor!\r\n");
}

TEST(Entry, PrinterSwitchesHaveTheirInitialValues) {
  EXPECT_FALSE(Kiv_HasRegistryPrinters());
  EXPECT_FALSE(Kiv_HasCaseSensitivePrinters());
  EXPECT_TRUE(Kiv_HasCurrentPrinting());
}

} // namespace
