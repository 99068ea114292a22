#include "aapp.hpp"

#include "acmdline.hpp"
#include "aevents.hpp"
#include "amlstr.hpp"
#include "aplatfrm.hpp"
#include "atheme_manager.hpp"
#include "atrace.hpp"
#include "frame/frame_run.hpp"
#include "frame/recording_application.hpp"
#include "support/imports/import_hook.hpp"
#include "support/imports/import_spy.hpp"
#include "sv/help.hpp"
#include "sv/imagepool.hpp"
#include "sv/resource.hpp"
#include "tools/winapi.hpp"

#include <gtest/gtest.h>

#include <bit>
#include <cstring>
#include <ostream>
#include <process.h>
#include <type_traits>

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

TEST(Application, SwitchesTracingAsTheCommandLineSaysBeforeItOpensTheFile) {
  RecordingApplication application;
  static Steps opened;
  support::spyOnImport("kivara.dll", "fopen", [](support::SpiedCall const & call) {
    if (std::strcmp(call.text(0), "out.txt") == 0)
      opened.emplace_back(Kiv_IsTracingEnabled() ? "on" : "off");
  });
  runMain(application, {"-trace", "-trfout.txt"});
  EXPECT_EQ(opened, Steps{"on"});
}

TEST(Application, SwitchesTracingOffWithoutTheOption) {
  RecordingApplication application;
  Kiv_EnableTracing(true);
  runMain(application);
  EXPECT_FALSE(Kiv_IsTracingEnabled());
}

TEST(Application, StartsEvenWithoutTraceAndPidFile) {
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

struct FolderRow {
  char const * told;
  char const * kept;
};
std::ostream & operator<<(std::ostream & out, FolderRow const & row) { return out << '[' << row.told << ']'; }

char const * toldFolder = "";
DWORD WINAPI tellFolder(DWORD size, char * buffer) {
  EXPECT_EQ(size, 260u);
  DWORD const length = static_cast<DWORD>(std::strlen(toldFolder));
  if (length >= size)
    return length + 1;
  std::memcpy(buffer, toldFolder, length + 1);
  return length;
}

std::string const kLongestFolder = "C:\\" + std::string(256, 'f');
std::string const kTooLongFolder = kLongestFolder + "f";

class StartFolder : public testing::TestWithParam<FolderRow> {};
TEST_P(StartFolder, HasBackslashesAndEndsInOne) {
  RecordingApplication application;
  toldFolder = GetParam().told;
  support::replaceImports(GetModuleHandleA("kivara.dll"), "KERNEL32.dll",
                          {{"GetCurrentDirectoryA", reinterpret_cast<void *>(tellFolder)}});
  runMain(application);
  EXPECT_STREQ(Kiv_GetStartCWD(true).c_str(), GetParam().kept);
}
INSTANTIATE_TEST_SUITE_P(Application, StartFolder,
                         testing::Values(FolderRow{"C:\\a b", "C:\\a b\\"}, FolderRow{"C:/a/b", "C:\\a\\b\\"},
                                         FolderRow{"C:\\a\\", "C:\\a\\"}, FolderRow{"C:/", "C:\\"},
                                         FolderRow{"C:\\a//", "C:\\a\\"},
                                         FolderRow{"\\\\server\\share", "\\\\server\\share\\"}, FolderRow{"", ""}));

TEST(StartFolderName, OfGreatestLengthIsKept) {
  RecordingApplication application;
  support::replaceImports(GetModuleHandleA("kivara.dll"), "KERNEL32.dll",
                          {{"GetCurrentDirectoryA", reinterpret_cast<void *>(tellFolder)}});
  toldFolder = kLongestFolder.c_str();
  runMain(application);
  EXPECT_EQ(Kiv_GetStartCWD(false).c_str(), kLongestFolder);
}

TEST(StartFolderName, ThatIsTooLongLeavesTheStartUnknown) {
  RecordingApplication application;
  support::replaceImports(GetModuleHandleA("kivara.dll"), "KERNEL32.dll",
                          {{"GetCurrentDirectoryA", reinterpret_cast<void *>(tellFolder)}});
  toldFolder = kTooLongFolder.c_str();
  runMain(application);
  EXPECT_EQ(Kiv_GetStartCWD(true).Len(), 0);
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

TEST(Application, ReportsThatTheEndHasBegun) {
  RecordingApplication application;
  bool inRun = true;
  application.onRun = [&] { return inRun = KivApplicationInterface::IsAfterMain(), 0; };
  runMain(application);
  EXPECT_FALSE(inRun);
  EXPECT_TRUE(KivApplicationInterface::IsAfterMain());
}

/// Calls a function for each event of a type.
class Observer : public KivEventListener {
public:
  Observer(KivEventType type, std::function<void(KivEvent *)> then) : then_(std::move(then)) {
    setEventHandler(type, &Observer::handle);
  }

private:
  void handle(KivEvent * event) { then_(event); }
  std::function<void(KivEvent *)> then_;
};

TEST(Application, ReportsItsEndWithTheExitCodeBeforeAnythingGoes) {
  RecordingApplication application;
  SV::ResMgr manager("language\\2057\\kivara72.dll");
  application.onPrepare = [&] {
    application.createHelpObject("help");
    SV::Resource::SetResManager(&manager);
    return 0;
  };
  Steps seen;
  Observer const observer(KIV_EVENT_AppExit, [&](KivEvent * event) {
    seen.emplace_back(static_cast<KivExitAppEvent *>(event)->GetReason().c_str());
    EXPECT_TRUE(KivApplicationInterface::IsAfterMain());
    EXPECT_NE(SV::Application::GetHelp(), nullptr);
    EXPECT_EQ(SV::Resource::GetResManager(), &manager);
    EXPECT_FALSE(DeleteFileA("out.txt")) << "the trace file is still open";
  });
  runMain(application, {"-trfout.txt"});
  EXPECT_EQ(seen, (Steps{"end(0)"}));
}

/// Steps of the end, each with "help" as long as the help object is there. Spies outlive their test, and the program.
Steps & endNotes() {
  static auto * const notes = new Steps;
  return *notes;
}
void const * awaitedText = nullptr;

void noteEnd(char const * step) {
  endNotes().push_back(std::string(step) + (SV::Application::GetHelp() != nullptr ? ", help" : ""));
}

void watchTheEnd() {
  support::spyOnImport("kivara.dll", "fclose", [](support::SpiedCall const &) {
    noteEnd("trace file closed");
    Kiv_Trace("too late for the file");
  });
  support::spyOnImport("kivara.dll", "DeleteStringData", [](support::SpiedCall const & call) {
    if (call.text(0) != awaitedText)
      return;
    awaitedText = nullptr; // another text may get the block
    noteEnd("texts deleted");
  });
  support::spyOnImport("SV0105.dll", "FreeLibrary",
                       [](support::SpiedCall const &) { noteEnd("resource DLL unloaded"); });
  support::spyOnImport("kivara.dll", "SetResManager", [](support::SpiedCall const &) { noteEnd("no manager active"); });
}

TEST(Application, TakesTheStepsOfItsEndInOrder) {
  RecordingApplication application;
  application.onPrepare = [&] {
    application.createHelpObject("help");
    EXPECT_TRUE(application.createResourceManager("kivara", true));
    return 0;
  };
  Observer const observer(KIV_EVENT_AppExit, [&](KivEvent *) {
    SV::StringData const * const text = Kiv_MultiLangGet(1001, 2057).block();
    EXPECT_STREQ(text->aStr, "activity");
    awaitedText = text;
    noteEnd("AppExit");
    watchTheEnd();
  });
  runMain(application, {"-trace", "-trfout.txt"});
  EXPECT_EQ(endNotes(), (Steps{"AppExit, help", "trace file closed, help", "texts deleted, help",
                               "resource DLL unloaded", "no manager active"}));
  EXPECT_EQ(contents("out.txt"), "");
}

TEST(Application, ReportsEachChangeOfTheSystemsSettingsToListeners) {
  RecordingApplication application;
  std::vector<int> changes;
  Observer const observer(KIV_EVENT_SystemSettingsChanged, [&](KivEvent * event) {
    changes.push_back(static_cast<KivSystemSettingsChangedEvent *>(event)->GetChange());
  });
  for (int change = 1; change <= 6; ++change)
    application.SysChange(static_cast<SV::SysChangeType>(change));
  EXPECT_EQ(changes, (std::vector<int>{1, 2, 3, 4, 5, 6}));
}

TEST(Application, MakesTheImagesOfThemesAnewBeforeListenersHearOfAnotherLook) {
  RecordingApplication application;
  std::vector<bool> forgotten;
  HBITMAP before = nullptr;
  auto const image = [] { return KivThemeManager::Instance().GetCheckBoxIconImg(true).GetBitmap().GethBitmap(); };
  Observer const observer(KIV_EVENT_SystemSettingsChanged, [&](KivEvent *) { forgotten.push_back(image() != before); });
  application.onRun = [&] {
    for (int change = 1; change <= 6; ++change) {
      SV::Image const kept = KivThemeManager::Instance().GetCheckBoxIconImg(true);
      before = kept.GetBitmap().GethBitmap();
      application.SysChange(static_cast<SV::SysChangeType>(change));
    }
    return 0;
  };
  runMain(application);
  EXPECT_EQ(forgotten, (std::vector<bool>{false, false, false, true, false, false}));
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

TEST(HelpObject, TakesTheFileOfEachCall) {
  RecordingApplication application;
  application.createHelpObject("first");
  EXPECT_STREQ(SV::Application::GetHelp()->GetFileName().c_str(), (Kiv_GetProgramPath(true) + "first.chm").c_str());
  application.createHelpObject("second");
  EXPECT_STREQ(SV::Application::GetHelp()->GetFileName().c_str(), (Kiv_GetProgramPath(true) + "second.chm").c_str());
}

TEST(HelpObject, DiesAfterMain) {
  RecordingApplication application;
  application.onPrepare = [&] { return application.createHelpObject("help"), 0; };
  runMain(application);
  EXPECT_EQ(SV::Application::GetHelp(), nullptr);
}

TEST(HelpObject, IsMadeAgainAfterMain) {
  RecordingApplication application;
  application.onPrepare = [&] { return application.createHelpObject("first"), 0; };
  runMain(application);
  application.createHelpObject("second");
  ASSERT_NE(SV::Application::GetHelp(), nullptr);
  EXPECT_STREQ(SV::Application::GetHelp()->GetFileName().c_str(), (Kiv_GetProgramPath(true) + "second.chm").c_str());
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

class LanguagePack : public testing::TestWithParam<int> {};
TEST_P(LanguagePack, HasTheTextsOfTheFrameAndOfInternalErrors) {
  RecordingApplication application;
  SV::ResMgr manager(("language\\" + std::to_string(GetParam()) + "\\kivara72.dll").c_str());
  ASSERT_TRUE(manager.IsLoaded());
  for (unsigned long const id : {0x200290B, 0x2002922, 0x2002923, 0x2002924, 0x2000D18, 0x2002B7E})
    EXPECT_NE(SV::Resource::LoadString(SV::ResId(id, &manager)).Len(), 0) << std::hex << id;
  std::string const report = SV::Resource::LoadString(SV::ResId(0x2002B7E, &manager)).c_str();
  EXPECT_NE(report.find("%s"), std::string::npos) << "the place of the error's code";
  EXPECT_TRUE(application.steps().empty());
}
INSTANTIATE_TEST_SUITE_P(Languages, LanguagePack, testing::Values(1031, 2057));

/// The place of a virtual operation among those of its class.
template <class Member> std::ptrdiff_t slotOf(Member member) {
  struct Layout {
    std::ptrdiff_t function;
    std::ptrdiff_t adjustment;
  };
  return (std::bit_cast<Layout>(member).function - 1) / static_cast<std::ptrdiff_t>(sizeof(void *));
}

// Products that were built earlier call by place.
TEST(Application, HasItsVirtualOperationsInTheirSlots) {
  constexpr std::ptrdiff_t kBehindTheDestructor = 2; // it takes two places
  std::ptrdiff_t const slots[] = {slotOf(&KivMDIApplication::QueryExit),
                                  slotOf(&KivMDIApplication::SysChange),
                                  slotOf(&KivMDIApplication::AppEvent),
                                  slotOf(&KivMDIApplication::UserEvent),
                                  slotOf(&KivMDIApplication::Activate),
                                  slotOf(&KivMDIApplication::Deactivate),
                                  slotOf(&KivMDIApplication::ActivateExtHelp),
                                  slotOf(&KivMDIApplication::DeactivateExtHelp),
                                  slotOf(&KivMDIApplication::Main),
                                  slotOf(&KivMDIApplication::Exception),
                                  slotOf(&KivMDIApplication::IsUserDefPaintMDIClient),
                                  slotOf(&KivMDIApplication::PaintMDIClient),
                                  slotOf(&KivMDIApplication::runApplication),
                                  slotOf(&KivMDIApplication::prepareApplication),
                                  slotOf(&KivMDIApplication::getMDIClientImage)};
  std::ptrdiff_t expected = kBehindTheDestructor;
  for (std::ptrdiff_t const slot : slots)
    EXPECT_EQ(slot, expected++);
}

TEST(Application, IsAnMdiApplicationOfTheToolkitForProductsToDeriveFrom) {
  static_assert(std::is_base_of_v<SV::MDIApplication, KivMDIApplication>);
  static_assert(std::is_base_of_v<KivApplicationInterface, KivMDIApplication>);
  static_assert(std::is_abstract_v<KivMDIApplication>);
  static_assert(!std::is_polymorphic_v<KivApplicationInterface>);
}

} // namespace
