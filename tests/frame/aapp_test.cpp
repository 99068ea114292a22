#include "aapp.hpp"

#include "acmdline.hpp"
#include "aplatfrm.hpp"
#include "frame/frame_run.hpp"
#include "frame/recording_application.hpp"
#include "sv/help.hpp"
#include "sv/imagepool.hpp"
#include "sv/resource.hpp"
#include "tools/winapi.hpp"

#include <gtest/gtest.h>

#include <ostream>
#include <process.h>

using kivtest::contents;
using kivtest::RecordingApplication;
using kivtest::runMain;
using Steps = std::vector<std::string>;

namespace {

TEST(Application, RunsItsStepsInOrder) {
  RecordingApplication application;
  runMain(application);
  EXPECT_EQ(application.steps(), (Steps{"prepare", "exception 0x100 of 0x200290b", "exception 0x100 of 0x2002922",
                                        "exception 0x100 of 0x2002923", "exception 0x100 of 0x2002924", "run"}));
}

TEST(Application, HasReadTheCommandLineBeforeItPrepares) {
  RecordingApplication application;
  std::string seen;
  application.onPrepare = [&] {
    seen = KivCmdline::Instance().getValue("seen").c_str();
    return 0;
  };
  runMain(application, {"-seenyes"});
  EXPECT_EQ(seen, "yes");
}

TEST(Application, OpensItsTraceFileBeforeItPreparesAndClosesItAfterTheRun) {
  RecordingApplication application;
  bool openInPrepare = false;
  bool openInRun = false;
  application.onPrepare = [&] { return openInPrepare = GetFileAttributesA("out.txt") != INVALID_FILE_ATTRIBUTES, 0; };
  application.onRun = [&] { return openInRun = !DeleteFileA("out.txt"), 0; };
  runMain(application, {"-trfout.txt"});
  EXPECT_TRUE(openInPrepare);
  EXPECT_TRUE(openInRun);
  EXPECT_TRUE(DeleteFileA("out.txt"));
}

TEST(Application, StartsAllTheSameWithoutTraceAndPidFile) {
  RecordingApplication application;
  runMain(application, {"-trfno\\such\\folder.txt", "-pidfileno\\such\\folder.pid"});
  EXPECT_EQ(application.steps().back(), "run");
}

TEST(Application, WritesItsProcessIdBeforeItPrepares) {
  RecordingApplication application;
  std::string text;
  application.onPrepare = [&] { return text = contents("out.pid"), 0; };
  runMain(application, {"-pidfileout.pid"});
  EXPECT_EQ(text, std::to_string(_getpid()) + "\r\n");
}

TEST(Application, KeepsTheDirectoryOfItsStart) {
  RecordingApplication application;
  char folder[MAX_PATH];
  GetCurrentDirectoryA(sizeof folder, folder);
  application.onPrepare = [] { return SetCurrentDirectoryA("C:\\"), 0; };
  runMain(application);
  EXPECT_EQ(Kiv_GetStartCWD(false).c_str(), std::string(folder));
  EXPECT_EQ(Kiv_GetStartCWD(true).c_str(), std::string(folder) + "\\");
  EXPECT_EQ(Kiv_GetStartCWDFilename("a.txt").c_str(), std::string(folder) + "\\a.txt");
  EXPECT_EQ(Kiv_GetStartCWDFilename("C:\\a.txt").c_str(), std::string(folder) + "\\C:\\a.txt");
  EXPECT_EQ(Kiv_GetStartCWDFilename(nullptr).c_str(), std::string(folder) + "\\");
}

TEST(Application, StartedInARootKeepsOneSeparator) {
  RecordingApplication application;
  SetCurrentDirectoryA("C:\\");
  runMain(application);
  EXPECT_STREQ(Kiv_GetStartCWD(true).c_str(), "C:\\");
  EXPECT_STREQ(Kiv_GetStartCWD(false).c_str(), "C:");
}

TEST(Application, TakesItsPicturesFromTheProgramFolder) {
  RecordingApplication application;
  runMain(application);
  EXPECT_EQ(SV::ImagePool::GetPoolFile(), Kiv_GetProgramPath(true) + "agfx.zip");
}

struct HeightRow {
  char const * option;
  int height;
};
std::ostream & operator<<(std::ostream & out, HeightRow const & row) { return out << row.option; }

class ApplicationFont : public testing::TestWithParam<HeightRow> {};
TEST_P(ApplicationFont, TakesHeightsFrom4To48) {
  RecordingApplication application;
  runMain(application, {GetParam().option});
  SV::Size const size = SV::Application::GetAppFont().GetSize();
  EXPECT_EQ(size.height, static_cast<long>(Kiv_GetSystemDPIScaleY() * GetParam().height));
  EXPECT_EQ(size.width, 0);
}
INSTANTIATE_TEST_SUITE_P(Application, ApplicationFont,
                         testing::Values(HeightRow{"-h3", 12}, HeightRow{"-h4", 4}, HeightRow{"-h48", 48},
                                         HeightRow{"-h49", 12}, HeightRow{"-hello", 12}, HeightRow{"-other", 12}));

TEST(Application, FontFollowsTheSystemsColoursAndIsTransparent) {
  RecordingApplication application;
  runMain(application);
  SV::Font const & font = SV::Application::GetAppFont();
  EXPECT_STREQ(font.GetName().c_str(), Kiv_IsAtLeastWindowsVista() ? "Segoe UI" : "MS Sans Serif");
  EXPECT_EQ(font.GetColor().GetColorName(), 20);
  EXPECT_EQ(font.GetFillColor().GetColorName(), 21);
  EXPECT_TRUE(font.IsTransparent());
}

TEST(Application, FontFaceOfTheCommandLineReplacesTheSystems) {
  RecordingApplication application;
  runMain(application, {"-fLiberation Mono"});
  EXPECT_STREQ(SV::Application::GetAppFont().GetName().c_str(), "Liberation Mono");
}

TEST(Application, CharSetOfTheCommandLineIsSetAfterThePreparation) {
  RecordingApplication application;
  SV::CharSet prepared = 0;
  application.onPrepare = [&] { return prepared = SV::Application::GetAppFont().GetCharSet(), 0; };
  runMain(application, {"-charset238"});
  EXPECT_NE(prepared, 238);
  EXPECT_EQ(SV::Application::GetAppFont().GetCharSet(), 238);
  EXPECT_EQ(application.steps()[1], "exception 0x100 of 0x2002922") << "the resource must not be asked for";
}

TEST(Application, WithoutACharSetTheFontKeepsItsOwn) {
  RecordingApplication application;
  SV::CharSet prepared = 0;
  application.onPrepare = [&] { return prepared = SV::Application::GetAppFont().GetCharSet(), 0; };
  runMain(application);
  EXPECT_EQ(SV::Application::GetAppFont().GetCharSet(), prepared);
}

TEST(Application, SuppressesWhatTheCommandLineSays) {
  RecordingApplication application;
  runMain(application, {"-no_dialogs"});
  EXPECT_TRUE(SV::Application::IsModalDialogSuppression());
  EXPECT_FALSE(SV::Application::IsShowWindowSuppression());
}

TEST(Application, WithoutAGUISuppressesDialogsAndWindows) {
  RecordingApplication application(false);
  runMain(application, {"-log_recorderdialogs.txt", "-x"});
  EXPECT_TRUE(SV::Application::IsModalDialogSuppression());
  EXPECT_TRUE(SV::Application::IsShowWindowSuppression());
  EXPECT_STREQ(SV::Application::GetModalDialogSuppressionLogfileName().c_str(), "dialogs.txt");
  EXPECT_FALSE(KivApplicationInterface::IsWithGUI());
}

TEST(Application, WithAGUISuppressesNothing) {
  RecordingApplication application;
  runMain(application);
  EXPECT_FALSE(SV::Application::IsModalDialogSuppression());
  EXPECT_FALSE(SV::Application::IsShowWindowSuppression());
  EXPECT_TRUE(KivApplicationInterface::IsWithGUI());
}

TEST(Application, TellsThatTheEndHasBegun) {
  RecordingApplication application;
  bool inRun = true;
  application.onRun = [&] { return inRun = KivApplicationInterface::IsAfterMain(), 0; };
  runMain(application);
  EXPECT_FALSE(inRun);
  EXPECT_TRUE(KivApplicationInterface::IsAfterMain());
}

TEST(Application, WithoutAnObjectThereIsNeitherGUINorEnd) {
  EXPECT_FALSE(KivApplicationInterface::IsWithGUI());
  EXPECT_FALSE(KivApplicationInterface::IsAfterMain());
}

TEST(Application, OfAnotherClassHasNeitherGUINorEnd) {
  class Plain : public SV::Application {
    void Main(int, char **) override {}
  } application;
  EXPECT_FALSE(KivApplicationInterface::IsWithGUI());
  EXPECT_FALSE(KivApplicationInterface::IsAfterMain());
}

TEST(Application, IsInitializedWhenTheDerivedClassSaysSo) {
  RecordingApplication application;
  EXPECT_FALSE(application.isAppInitialized());
  application.onRun = [&] { return application.appInitialized = true, 0; };
  runMain(application);
  EXPECT_TRUE(application.isAppInitialized());
}

TEST(HelpObject, IsInstalledOnce) {
  RecordingApplication application;
  application.createHelpObject("first");
  SV::Help * const first = SV::Application::GetHelp();
  ASSERT_NE(first, nullptr);
  application.createHelpObject("second");
  EXPECT_EQ(SV::Application::GetHelp(), first);
}

TEST(HelpObject, DiesAfterMain) {
  RecordingApplication application;
  application.onPrepare = [&] { return application.createHelpObject("help"), 0; };
  runMain(application);
  EXPECT_EQ(SV::Application::GetHelp(), nullptr);
}

TEST(Resources, LabelTheButtonsAndSetTheCharSet) {
  RecordingApplication application;
  SV::ResMgr * manager = nullptr;
  application.onPrepare = [&] {
    manager = new SV::ResMgr("language\\1031\\kivara72.dll");
    SV::Resource::SetResManager(manager);
    return 0;
  };
  runMain(application);
  EXPECT_EQ(application.steps(), (Steps{"prepare", "run"}));
  SV::International const & international = SV::Application::GetAppInternational();
  EXPECT_STREQ(international.GetOKButtonText().c_str(), "OK");
  EXPECT_STREQ(international.GetCancelButtonText().c_str(), "Abbrechen");
  EXPECT_STREQ(international.GetHelpButtonText().c_str(), "Hilfe");
  EXPECT_EQ(SV::Application::GetAppFont().GetCharSet(), 0);
  EXPECT_EQ(SV::Resource::GetResManager(), nullptr);
  delete manager;
}

TEST(Resources, LeaveNoManagerActiveAfterMain) {
  RecordingApplication application;
  SV::ResMgr manager("language\\2057\\kivara72.dll");
  application.onPrepare = [&] { return SV::Resource::SetResManager(&manager), 0; };
  runMain(application);
  EXPECT_EQ(SV::Resource::GetResManager(), nullptr);
}

} // namespace
