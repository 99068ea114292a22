// The animated tray icon.
#include "ui/tray/traytest.hpp"

namespace {

using traytest::Picture;
using traytest::Tray;

class TrayAnimation : public traytest::TrayTest {
protected:
  TrayAnimation() {
    start();
    create(tray);
  }

  void useList() {
    HICON icons[] = {red.get(), green.get(), blue.get()};
    ASSERT_TRUE(tray.SetIconList(icons, 2));
  }

  Picture red{0xFF0000};
  Picture green{0x00FF00};
  Picture blue{0x0000FF};
  Tray tray;
};

TEST_F(TrayAnimation, TakesTheIndexOfTheLastIconForTheCount) {
  HICON icons[] = {red.get(), green.get(), blue.get()};
  EXPECT_TRUE(tray.SetIconList(icons, 1));
  EXPECT_EQ(tray.m_IconList, (std::vector<HICON>{red.get(), green.get()}));
  EXPECT_TRUE(tray.SetIconList(icons + 2, 0));
  EXPECT_EQ(tray.m_IconList, std::vector<HICON>{blue.get()});
}

TEST_F(TrayAnimation, HasNoIconsWithoutAList) {
  useList();
  EXPECT_FALSE(tray.SetIconList(static_cast<HICON *>(nullptr), 3));
  EXPECT_TRUE(tray.m_IconList.empty());
  EXPECT_FALSE(tray.Animate(10, 0));
  EXPECT_FALSE(tray.StepAnimation());
}

TEST_F(TrayAnimation, TakesARangeOfNumbersWithBothEnds) {
  EXPECT_TRUE(tray.SetIconList(40, 43));
  EXPECT_EQ(tray.m_IconList.size(), 4u);
  EXPECT_TRUE(tray.SetIconList(0xFFFFFFFF, 0xFFFFFFFF));
  EXPECT_EQ(tray.m_IconList.size(), 1u);
}

TEST_F(TrayAnimation, KeepsItsListWhenTheFirstNumberIsAboveTheLast) {
  useList();
  EXPECT_FALSE(tray.SetIconList(43, 42));
  EXPECT_EQ(tray.m_IconList.size(), 3u);
}

std::vector<std::pair<HINSTANCE, LPCSTR>> asked;
HICON WINAPI answerIcon(HINSTANCE instance, LPCSTR name) {
  asked.emplace_back(instance, name);
  return reinterpret_cast<HICON>(std::uintptr_t{1000} + asked.size());
}

TEST_F(TrayAnimation, LoadsEachNumberFromTheProgram) {
  replace("USER32.dll", {{"LoadIconA", reinterpret_cast<void *>(answerIcon)}});
  EXPECT_TRUE(tray.SetIconList(7, 8));
  ASSERT_EQ(asked.size(), 2u);
  EXPECT_EQ(asked[0], std::pair(GetModuleHandleA(nullptr), LPCSTR(MAKEINTRESOURCEA(7))));
  EXPECT_EQ(asked[1], std::pair(GetModuleHandleA(nullptr), LPCSTR(MAKEINTRESOURCEA(8))));
  EXPECT_EQ(tray.m_IconList, (std::vector<HICON>{reinterpret_cast<HICON>(1001), reinterpret_cast<HICON>(1002)}));
  tray.SetStandardIcon(9u);
  EXPECT_EQ(asked.back(), std::pair(HINSTANCE(nullptr), LPCSTR(MAKEINTRESOURCEA(9))));
}

TEST_F(TrayAnimation, StepsFromTheLastIconToTheFirst) {
  useList();
  for (HICON const icon : {green.get(), blue.get(), red.get(), green.get()}) {
    EXPECT_TRUE(tray.StepAnimation());
    EXPECT_EQ(tray.GetIcon(), icon);
  }
}

TEST_F(TrayAnimation, RunsByTheTimerUntilItIsStoppedAndBringsTheFormerIconBack) {
  useList();
  HICON const former = tray.GetIcon();
  EXPECT_TRUE(tray.Animate(10, 0));
  EXPECT_EQ(tray.m_uIDTimer, 4567u);
  EXPECT_EQ(tray.m_hSavedIcon, former);
  EXPECT_EQ(tray.GetIcon(), former); // until the first step, which shows the second icon
  for (HICON const icon : {green.get(), blue.get(), red.get(), green.get()})
    EXPECT_TRUE(runUntil([&] { return tray.GetIcon() == icon; }));
  EXPECT_EQ(tray.StopAnimation(), 1);
  EXPECT_EQ(tray.GetIcon(), former);
  EXPECT_EQ(tray.StopAnimation(), 0);
  EXPECT_EQ(tray.m_uIDTimer, 0u);
  settle();
  EXPECT_EQ(tray.GetIcon(), former);
  tray.SetIcon(red.get());
  EXPECT_EQ(tray.StopAnimation(), 0);
  EXPECT_EQ(tray.GetIcon(), red.get()); // there is nothing to bring back any more
  std::string all;
  for (std::string const & call : shell->calls())
    all += call;
  EXPECT_NE(all.find("pixel 00ff00"), std::string::npos); // the shell has seen it
}

TEST_F(TrayAnimation, BeginsAnewFromTheIconThatWasThereBefore) {
  useList();
  HICON const former = tray.GetIcon();
  tray.Animate(10, 0);
  EXPECT_TRUE(runUntil([&] { return tray.GetIcon() == blue.get(); }));
  EXPECT_TRUE(tray.Animate(100000, 5));
  EXPECT_EQ(tray.m_hSavedIcon, former);
  EXPECT_EQ(tray.m_nCurrentIcon, 0u);
  EXPECT_EQ(tray.m_nAnimationPeriod, 5);
  EXPECT_EQ(tray.GetIcon(), former);
}

__time64_t moment = 1000;
__time64_t __cdecl giveMoment(__time64_t *) { return moment; }

TEST_F(TrayAnimation, EndsWhenMoreThanItsSecondsHavePassed) {
  replace("msvcrt.dll", {{"_time64", reinterpret_cast<void *>(giveMoment)}});
  useList();
  HICON const former = tray.GetIcon();
  moment = 1000;
  tray.Animate(100000, 3);
  moment = 1003;
  SendMessageA(tray.GetSafeHwnd(), WM_TIMER, 4567, 0);
  EXPECT_EQ(tray.GetIcon(), green.get());
  moment = 1004;
  SendMessageA(tray.GetSafeHwnd(), WM_TIMER, 4567, 0);
  EXPECT_EQ(tray.GetIcon(), former);
  EXPECT_EQ(tray.m_uIDTimer, 0u);
}

TEST_F(TrayAnimation, OfZeroSecondsAndBelowHasNoEnd) {
  replace("msvcrt.dll", {{"_time64", reinterpret_cast<void *>(giveMoment)}});
  useList();
  for (int const seconds : {0, -1}) {
    moment = 1000;
    tray.Animate(100000, seconds);
    moment = 1000000;
    tray.OnTimer(4567);
    EXPECT_EQ(tray.GetIcon(), green.get());
    EXPECT_NE(tray.m_uIDTimer, 0u);
  }
}

TEST_F(TrayAnimation, ATimerThatIsNotItsOwnIsReportedAndTaken) {
  useList();
  SendMessageA(tray.GetSafeHwnd(), WM_TIMER, 4567, 0);
  EXPECT_EQ(tray.GetIcon(), green.get());
  expectedAssertions = {"FALSE (asystray)"};
}

TEST_F(TrayAnimation, WithoutATimerIsNone) {
  useList();
  HICON const former = tray.GetIcon();
  replace("USER32.dll",
          {{"SetTimer", reinterpret_cast<void *>(+[](HWND, UINT_PTR, UINT, TIMERPROC) -> UINT_PTR { return 0; })}});
  EXPECT_FALSE(tray.Animate(10, 0));
  EXPECT_EQ(tray.StopAnimation(), 0);
  EXPECT_EQ(tray.GetIcon(), former);
}

TEST_F(TrayAnimation, BeforeTheCreationHasNoWindowForATimer) {
  Tray other;
  HICON icons[] = {red.get()};
  other.SetIconList(icons, 0);
  EXPECT_FALSE(other.Animate(10, 0));
  EXPECT_EQ(other.m_uIDTimer, 0u);
  EXPECT_EQ(other.m_hSavedIcon, nullptr);
  EXPECT_EQ(other.StopAnimation(), 0);
}

TEST_F(TrayAnimation, EndsWithTheIconThatIsCreatedAgain) {
  useList();
  tray.Animate(10, 0);
  create(tray);
  EXPECT_EQ(tray.m_uIDTimer, 0u);
  EXPECT_EQ(tray.m_hSavedIcon, nullptr);
  EXPECT_EQ(tray.StopAnimation(), 0);
}

} // namespace
