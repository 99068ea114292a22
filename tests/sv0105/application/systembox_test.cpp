#include "sv0105/controls/dialogtest.hpp"

#include "support/data/files.hpp"

namespace {

class SystemBox : public svtest::DialogTest {
protected:
  static HWND box() { return FindWindowA("#32770", "Caption of the box"); }
  static void answer() { PostMessageA(box(), WM_COMMAND, IDOK, 0); }
  static constexpr char kCaption[] = "Caption of the box";
};

TEST_F(SystemBox, IsShownWithTheWaitPointerOff) {
  SV::Application::Wait(4);
  script->then([] {
    EXPECT_NE(box(), nullptr);
    EXPECT_EQ(SV::Application::IsWait(), 0);
    answer();
  });
  EXPECT_EQ(SV::ShowBoxOrLog("Text", kCaption, MB_OK), IDOK);
  EXPECT_EQ(SV::Application::IsWait(), 4);
  script->then([] { answer(); });
  EXPECT_EQ(SV::ShowBoxOrNothing("Text", kCaption, MB_OK), IDOK);
}

TEST_F(SystemBox, UnderSuppressionIsALineOrNothing) {
  SV::Application::SetModalDialogSuppression(true);
  SV::Application::SetModalDialogSuppressionLogfileName("dialogs.txt");
  EXPECT_EQ(SV::ShowBoxOrNothing("Silence", kCaption, MB_OK), 0);
  EXPECT_FALSE(support::readFile("dialogs.txt").has_value());
  EXPECT_EQ(SV::ShowBoxOrLog("Line", kCaption, MB_OK), 0);
  EXPECT_EQ(support::readFile("dialogs.txt").value_or(""), "Line\r\n");
  EXPECT_EQ(GetLastError(), 0u) << "no box has failed";
}

TEST_F(SystemBox, MaySayInTheLogWhatItDoesNotShow) {
  SV::Application::SetModalDialogSuppressionLogfileName("dialogs.txt");
  SV::BoxText const text("Shown", "Logged");
  script->then([] {
    EXPECT_NE(FindWindowExA(box(), nullptr, nullptr, "Shown"), nullptr);
    answer();
  });
  SV::ShowBoxOrLog(text, kCaption, MB_OK);
  EXPECT_FALSE(support::readFile("dialogs.txt").has_value());
  SV::Application::SetModalDialogSuppression(true);
  SV::ShowBoxOrLog(text, kCaption, MB_OK);
  EXPECT_EQ(support::readFile("dialogs.txt").value_or(""), "Logged\r\n");
}

int timesAsked = 0;
SV::Window const * ownerWindow = nullptr;

SV::Window const * askedOwner() {
  ++timesAsked;
  EXPECT_EQ(SV::Application::IsWait(), 0) << "the pointer is the ordinary one already";
  return ownerWindow;
}

TEST_F(SystemBox, AsksForItsOwnerOnlyWhenItIsShown) {
  SV::Window main(nullptr, SV::WB_TITLE);
  main.Show();
  ownerWindow = &main;
  SV::Application::Wait(1);
  script->then([&] {
    EXPECT_EQ(GetWindow(box(), GW_OWNER), main.GethWnd());
    EXPECT_FALSE(main.IsEnabled());
    answer();
  });
  SV::ShowBoxOrLog("Text", kCaption, MB_OK, askedOwner);
  EXPECT_EQ(timesAsked, 1);
  SV::Application::SetModalDialogSuppression(true);
  SV::ShowBoxOrLog("Text", kCaption, MB_OK, askedOwner);
  SV::ShowBoxOrNothing("Text", kCaption, MB_OK, askedOwner);
  EXPECT_EQ(timesAsked, 1);
}

TEST_F(SystemBox, GivesTheKeyboardBackToTheControlThatHadIt) {
  SV::Window main(nullptr, SV::WB_TITLE);
  SV::PushButton button(&main);
  main.Show();
  button.Show();
  button.GrabFocus();
  ASSERT_EQ(GetFocus(), button.GethWnd());
  script->then([] { answer(); });
  SV::ShowBoxOrLog("Text", kCaption, MB_OK);
  EXPECT_EQ(GetFocus(), button.GethWnd());
}

TEST(ExchangeFormat, HasOneNumberForOneName) {
  unsigned long const number = SV::Exchange::RegisterFormatName("SvTestFormat");
  EXPECT_NE(number, 0u);
  EXPECT_EQ(SV::Exchange::RegisterFormatName("SvTestFormat"), number);
  EXPECT_EQ(SV::Exchange::RegisterFormatName(""), 0u);
}

} // namespace
