#include "aevents.hpp"
#include "ainter.hpp"
#include "awinstack.hpp"
#include "frame/box_watch.hpp"
#include "frame/frame_run.hpp"
#include "frame/recording_application.hpp"
#include "locale/ainter_state.hpp"
#include "sv/resource.hpp"
#include "sv/window.hpp"

#include <gtest/gtest.h>

using kivtest::BoxWatch;
using kivtest::RecordingApplication;

namespace {

std::string const kResourceText = "[Recorder-10001]\nInternal error loading a resource.\nResource ID: 5\n\n"
                                  "This is a severe error!!\n\nThe application will shut down immediately!\n\n"
                                  "Please inform your administrator!!";

TEST(SevereException, ShowsItsTextUnderTheApplicationsName) {
  RecordingApplication application;
  BoxWatch watch;
  EXPECT_FALSE(application._handleException(0x100, 5));
  ASSERT_EQ(watch.boxes().size(), 1u);
  EXPECT_EQ(watch.boxes()[0].title, "Recorder");
  EXPECT_EQ(watch.boxes()[0].text, kResourceText);
}

TEST(SevereException, OfASystemObjectIsReportedToo) {
  RecordingApplication application;
  BoxWatch watch;
  EXPECT_FALSE(application._handleException(0x200, 0));
  ASSERT_EQ(watch.boxes().size(), 1u);
  EXPECT_EQ(watch.boxes()[0].text.rfind("[Recorder-10002]\nSystem object (e.g. window) could not be created.\n\n", 0),
            0u);
}

TEST(SevereException, OfAnApplicationWithANullNameHasAnEmptyOne) {
  RecordingApplication application(true, nullptr);
  BoxWatch watch;
  application._handleException(0x200, 0);
  ASSERT_EQ(watch.boxes().size(), 1u);
  EXPECT_EQ(watch.boxes()[0].text.rfind("[-10002]\n", 0), 0u) << watch.boxes()[0].text;
}

TEST(SevereException, TheBoxHasNoOwnerWithoutAVisibleApplicationWindow) {
  RecordingApplication application;
  SV::InitSV(0, nullptr);
  SV::Window window(nullptr, SV::WB_TITLE);
  SV::Application::SetAppWindow(&window);
  BoxWatch watch;
  application._handleException(0x200, 0);
  ASSERT_EQ(watch.boxes().size(), 1u);
  EXPECT_EQ(watch.boxes()[0].owner, nullptr);
}

TEST(SevereException, TheBoxLiesOnTheVisibleApplicationWindow) {
  RecordingApplication application;
  SV::InitSV(0, nullptr);
  SV::Window window(nullptr, SV::WB_TITLE);
  window.Show();
  SV::Application::SetAppWindow(&window);
  BoxWatch watch;
  application._handleException(0x200, 0);
  ASSERT_EQ(watch.boxes().size(), 1u);
  EXPECT_EQ(watch.boxes()[0].owner, window.GethWnd());
}

TEST(SevereException, TheBoxLiesOnTheTopmostParentWindow) {
  RecordingApplication application;
  SV::InitSV(0, nullptr);
  SV::Window main(nullptr, SV::WB_TITLE);
  SV::Window dialog(nullptr, SV::WB_TITLE);
  main.Show();
  dialog.Show();
  SV::Application::SetAppWindow(&main);
  Kiv_PushParentWindow(&dialog);
  BoxWatch watch;
  application._handleException(0x200, 0);
  ASSERT_EQ(watch.boxes().size(), 1u);
  EXPECT_EQ(watch.boxes()[0].owner, dialog.GethWnd());
}

/// Keeps the reasons of all ends.
class Ends : public KivEventListener {
public:
  Ends() { setEventHandler(KIV_EVENT_AppExit, &Ends::note); }
  std::vector<std::string> reasons;

private:
  void note(KivEvent * event) { reasons.emplace_back(static_cast<KivExitAppEvent *>(event)->GetReason().c_str()); }
};

TEST(SevereException, EndsTheApplicationOnceItsBoxIsClosed) {
  RecordingApplication application;
  Ends ends;
  BoxWatch watch;
  std::size_t whileOpen = 99;
  watch.whileOpen = [&] { whileOpen = ends.reasons.size(); };
  application._handleException(0x200, 0);
  EXPECT_EQ(whileOpen, 0u);
  EXPECT_EQ(ends.reasons, (std::vector<std::string>{"exception (minidump)"}));
}

TEST(SevereException, ThatIsSettledEndsNothing) {
  RecordingApplication application;
  Ends const ends;
  kivara::loadingResourceFile = true;
  application._handleException(0x400, 0);
  EXPECT_TRUE(ends.reasons.empty());
}

TEST(SevereException, OfAMissingResourceMakesTheNextManagerOfTheChainActive) {
  RecordingApplication application;
  KivInternational::InitAvailableLanguages();
  ASSERT_TRUE(KivInternational::createResourceManager("kivara", true));
  ASSERT_TRUE(KivInternational::createResourceManager("kivara", true));
  SV::ResMgr * const next = KivInternational::getNextResMgr();
  ASSERT_TRUE(next);
  ASSERT_NE(SV::Resource::GetResManager(), next);
  EXPECT_TRUE(application._handleException(0x100, 1));
  EXPECT_EQ(SV::Resource::GetResManager(), next);
  EXPECT_EQ(KivInternational::getNextResMgr(), nullptr);
  KivInternational::DeleteResMgrs();
}

TEST(SevereException, InsideOfAnotherEndsNothingByItself) {
  RecordingApplication application;
  Ends const ends;
  BoxWatch watch;
  watch.whileOpen = [&] {
    application._handleException(0x100, 1);
    EXPECT_TRUE(ends.reasons.empty());
  };
  application._handleException(0x200, 0);
  EXPECT_EQ(ends.reasons.size(), 1u);
}

TEST(SevereException, AListenerOfTheEndThatRaisesAnotherOneIsAnsweredByTheToolkit) {
  RecordingApplication application;
  class Raiser : public KivEventListener {
  public:
    explicit Raiser(RecordingApplication & owner) : owner_(owner) {
      setEventHandler(KIV_EVENT_AppExit, &Raiser::raise);
    }
    bool settled = true;

  private:
    void raise(KivEvent *) { settled = owner_._handleException(0x200, 0); }
    RecordingApplication & owner_;
  } raiser(application);
  BoxWatch watch;
  application._handleException(0x200, 0);
  EXPECT_FALSE(raiser.settled);
  EXPECT_EQ(watch.boxes().size(), 1u);
}

TEST(SevereException, TheWaitPointerIsOffWhileTheBoxIsOpen) {
  RecordingApplication application;
  BoxWatch watch;
  unsigned short whileOpen = 99;
  watch.whileOpen = [&] { whileOpen = SV::Application::IsWait(); };
  SV::Application::Wait(3);
  application._handleException(0x200, 0);
  EXPECT_EQ(whileOpen, 0);
  EXPECT_EQ(SV::Application::IsWait(), 3);
}

TEST(SevereException, InsideOfAnotherIsLeftToTheToolkitWithoutABox) {
  RecordingApplication application;
  BoxWatch watch;
  bool inner = true;
  watch.whileOpen = [&] { inner = application._handleException(0x100, 1); };
  EXPECT_FALSE(application._handleException(0x200, 0));
  EXPECT_FALSE(inner);
  EXPECT_EQ(watch.boxes().size(), 1u);
}

TEST(SevereException, AfterAnotherOneIsReportedAgain) {
  RecordingApplication application;
  BoxWatch watch;
  application._handleException(0x200, 0);
  application._handleException(0x200, 0);
  EXPECT_EQ(watch.boxes().size(), 2u);
}

TEST(SevereException, OfAResourceFileIsSilentWhileOneIsBeingLoaded) {
  RecordingApplication application;
  BoxWatch watch;
  kivara::loadingResourceFile = true;
  EXPECT_TRUE(application._handleException(0x400, 0));
  EXPECT_TRUE(watch.boxes().empty());
  EXPECT_TRUE(kivara::loadingResourceFile) << "the flag is only read";
  EXPECT_TRUE(application._handleException(0x400, 0)) << "a handled exception must not count as still being handled";
}

TEST(SevereException, OfAResourceFileIsReportedAtAllOtherTimes) {
  RecordingApplication application;
  BoxWatch watch;
  EXPECT_FALSE(application._handleException(0x400, 0));
  ASSERT_EQ(watch.boxes().size(), 1u);
  EXPECT_EQ(watch.boxes()[0].text.rfind("[Recorder-10004]\nInternal error loading a resource file.\n\n", 0), 0u);
}

TEST(SevereException, OtherCodesAreReportedWhileAResourceFileIsBeingLoaded) {
  RecordingApplication application;
  BoxWatch watch;
  kivara::loadingResourceFile = true;
  EXPECT_FALSE(application._handleException(0x100, 0));
  EXPECT_FALSE(application._handleException(7, 0));
  EXPECT_EQ(watch.boxes().size(), 2u);
}

TEST(SevereException, UnderSuppressionGoesToTheLog) {
  RecordingApplication application(false);
  kivtest::runMain(application, {"-log_recorderdialogs.txt"});
  EXPECT_FALSE(application._handleException(0x100, 5));
  EXPECT_NE(kivtest::contents("dialogs.txt").find("[Recorder-10001]"), std::string::npos);
}

TEST(SevereException, FromARealMissingResourceFileNamesTheFile) {
  class Told : public RecordingApplication {
  public:
    void Exception(long code, unsigned long arg) override { _handleException(code, arg); }
  } application;
  BoxWatch watch;
  SV::ResMgr const manager("language\\7\\nothing.dll");
  EXPECT_FALSE(manager.IsLoaded());
  ASSERT_EQ(watch.boxes().size(), 1u);
  EXPECT_NE(watch.boxes()[0].text.find("\nResource file name: language\\7\\nothing.dll\n\n"), std::string::npos)
      << watch.boxes()[0].text;
}

} // namespace
