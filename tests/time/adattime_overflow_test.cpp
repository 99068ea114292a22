// The user is warned of an overflow, in a real box.
#include "adattime.hpp"

#include "ui/boxes/boxtest.hpp"

#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <vector>

namespace {

constexpr double kLargest = std::numeric_limits<double>::max();

class OverflowBox : public boxtest::BoxTest {
protected:
  ~OverflowBox() override { KivCoreTime::ResetWarnButtonPressed(); }

  /// What each box says that is shown during the test; its button is pressed.
  std::vector<std::string> messages;

  void answerNextBox() {
    script->then([this] {
      auto * const box = dynamic_cast<KivWarningBox *>(Kiv_GetTopWindow(0));
      ASSERT_TRUE(box);
      std::vector<HWND> buttons;
      for (HWND const child : boxtest::childrenOf(box->GethWnd())) {
        std::string const text = boxtest::systemText(child);
        if (GetDlgCtrlID(child) != 0 && text == "OK")
          buttons.push_back(child);
        else if (!text.empty())
          messages.push_back(text);
      }
      ASSERT_EQ(buttons.size(), 1u);
      owner = GetWindow(box->GethWnd(), GW_OWNER);
      svtest::postClick(buttons[0]);
    });
  }

  HWND owner = nullptr;
};

KivCoreTime overflown() { return KivCoreTime(-1.0); }

TEST_F(OverflowBox, IsShownOnceUntilItIsArmedAgain) {
  SV::Window parent(nullptr, SV::WB_TITLE);
  parent.Show();
  KivCoreTime first = overflown();
  answerNextBox();
  first.tstOverFlow(&parent, "The time is too long.");
  EXPECT_EQ(messages, std::vector<std::string>{"The time is too long."});
  EXPECT_EQ(owner, parent.GethWnd());
  EXPECT_EQ(first.asDouble(), kLargest);
  EXPECT_TRUE(first.overFlow());

  KivCoreTime second = overflown();
  second.tstOverFlow(&parent, "Not shown");
  first.tstOverFlow(&parent, "Not shown");
  EXPECT_EQ(messages.size(), 1u);
  EXPECT_EQ(second.asDouble(), kLargest);

  KivCoreTime::ResetWarnButtonPressed();
  answerNextBox();
  second.tstOverFlow(nullptr, "Once more.");
  EXPECT_EQ(messages, (std::vector<std::string>{"The time is too long.", "Once more."}));
  first.tstOverFlow(nullptr, "Not shown");
  EXPECT_EQ(messages.size(), 2u);
}

TEST_F(OverflowBox, IsNotShownWithoutAnOverflow) {
  KivCoreTime time(5.0);
  time.tstOverFlow(nullptr, "Not shown");
  EXPECT_EQ(time.asDouble(), 5.0);
  KivCoreTime first = overflown();
  answerNextBox();
  first.tstOverFlow(nullptr, "Shown");
  EXPECT_EQ(messages, std::vector<std::string>{"Shown"}) << "the one before it has not counted as a warning";
}

// The warning counts when the user has answered it.
TEST_F(OverflowBox, FindsTheLargestValueAndMayBeShownInsideOfAnother) {
  KivCoreTime time = overflown();
  KivCoreTime other = overflown();
  script->then([&] {
    EXPECT_EQ(time.asDouble(), kLargest);
    other.tstOverFlow(nullptr, "Inner");
  });
  script->then([] { dynamic_cast<KivWarningBox &>(*Kiv_GetTopWindow(0)).EndDialog(1); });
  script->then([] { dynamic_cast<KivWarningBox &>(*Kiv_GetTopWindow(0)).EndDialog(1); });
  time.tstOverFlow(nullptr, "Outer");
  EXPECT_TRUE(script->isDone()) << "two boxes were closed";
}

TEST_F(OverflowBox, ThatIsSuppressedIsLoggedAndCounts) {
  SV::Application::SetModalDialogSuppression(true);
  SV::Application::SetModalDialogSuppressionLogfileName("dialogs.txt");
  KivCoreTime time = overflown();
  time.tstOverFlow(nullptr, "The time is too long.");
  EXPECT_EQ(time.asDouble(), kLargest);
  std::string const log = support::readFile("dialogs.txt").value_or("no file");
  EXPECT_NE(log.find("The time is too long.\r\n"), std::string::npos) << log;
  SV::Application::SetModalDialogSuppression(false);
  KivCoreTime other = overflown();
  other.tstOverFlow(nullptr, "Not shown"); // a box would wait for ever
  EXPECT_EQ(support::readFile("dialogs.txt").value_or("no file"), log);
  EXPECT_TRUE(visibleTopLevelWindows().empty());
}

} // namespace
