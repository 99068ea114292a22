// Limits of the tray icon: what is reported where a caller violates them, and what is done even then.
#include "support/processes/debug_lines.hpp"
#include "ui/tray/traytest.hpp"

namespace {

using traytest::Lines;
using traytest::Tray;

class TrayLimits : public traytest::TrayTest {
protected:
  static std::string text(std::size_t length) { return std::string(length, 'x'); }
  static bool hasField(std::string const & line, std::string const & field) {
    return line.find(field) != std::string::npos;
  }
};

constexpr char kCreationIcon[] =
    "dwBalloonIcon == NIIF_NONE || dwBalloonIcon == NIIF_INFO || dwBalloonIcon == NIIF_WARNING || "
    "dwBalloonIcon == NIIF_ERROR (asystray)";
constexpr char kIcon[] =
    "dwIcon == NIIF_NONE || dwIcon == NIIF_INFO || dwIcon == NIIF_WARNING || dwIcon == NIIF_ERROR (asystray)";

TEST_F(TrayLimits, OfTheCallbackMessageAreThoseOfMessagesOfAnApplication) {
  start();
  Tray tray;
  EXPECT_TRUE(tray.Create(nullptr, WM_APP, "Tip", SV::Icon(), kNumber));
  EXPECT_EQ(traytest::assertions(), Lines());
  EXPECT_TRUE(tray.Create(nullptr, WM_APP - 1, "Tip", SV::Icon(), kNumber));
  EXPECT_EQ(tray.GetCallbackMessage(), WM_APP - 1u);
  EXPECT_TRUE(tray.SetCallbackMessage(WM_APP));
  EXPECT_TRUE(tray.SetCallbackMessage(WM_APP - 1));
  EXPECT_EQ(tray.GetCallbackMessage(), WM_APP - 1u);
  expectedAssertions = {"uCallbackMessage >= WM_APP (asystray)", "uCallbackMessage >= WM_APP (asystray)"};
  ASSERT_EQ(traytest::assertionLines().size(), 2u);
  EXPECT_NE(traytest::assertionLines()[0], traytest::assertionLines()[1]);
}

TEST_F(TrayLimits, OfTheTextAre128InTheCreationAnd127Later) {
  start();
  Tray tray;
  EXPECT_TRUE(tray.Create(nullptr, kMessage, text(128).c_str(), SV::Icon(), kNumber));
  EXPECT_EQ(textOf(tray.GetTooltipText()), text(127));
  EXPECT_TRUE(tray.SetTooltipText(text(127).c_str()));
  EXPECT_EQ(textOf(tray.GetTooltipText()), text(127));
  EXPECT_EQ(traytest::assertions(), Lines());
  EXPECT_TRUE(tray.SetTooltipText(text(128).c_str()));
  EXPECT_EQ(textOf(tray.GetTooltipText()), text(127));
  EXPECT_TRUE(tray.Create(nullptr, kMessage, text(129).c_str(), SV::Icon(), kNumber));
  EXPECT_EQ(textOf(tray.GetTooltipText()), text(127));
  EXPECT_EQ(Tray::m_nMaxTooltipLength, 128u);
  expectedAssertions = {"_tcslen(pszTip) < m_nMaxTooltipLength (asystray)",
                        "_tcslen(szToolTip) <= m_nMaxTooltipLength (asystray)"};
}

TEST_F(TrayLimits, OfTheTextHoldBeforeTheCreationToo) {
  Tray tray;
  EXPECT_FALSE(tray.SetTooltipText(text(127).c_str()));
  EXPECT_EQ(traytest::assertions(), Lines());
  EXPECT_FALSE(tray.SetTooltipText(text(128).c_str()));
  expectedAssertions = {"_tcslen(pszTip) < m_nMaxTooltipLength (asystray)"};
}

TEST_F(TrayLimits, OfABalloonThatAreKeptAreNotReported) {
  start();
  Tray tray;
  tray.Create(nullptr, kMessage, "Tip", SV::Icon(), kNumber, FALSE, text(255).c_str(), text(63).c_str(), 3, 30);
  EXPECT_TRUE(hasField(shell->calls().at(0), "info '" + text(255) + "' title '" + text(63) + "' kind 3 time 30000 "));
  EXPECT_TRUE(tray.ShowBalloon(text(255).c_str(), text(63).c_str(), 0, 10));
  EXPECT_TRUE(hasField(shell->calls().at(0), "info '" + text(255) + "' title '" + text(63) + "' kind 0 time 10000 "));
}

TEST_F(TrayLimits, OfTheFirstBalloonAreReportedInTheirOrderAndTheTextsAreCut) {
  start();
  Tray tray;
  EXPECT_TRUE(
      tray.Create(nullptr, kMessage, "Tip", SV::Icon(), kNumber, FALSE, text(256).c_str(), text(64).c_str(), 4, 31));
  EXPECT_TRUE(hasField(shell->calls().at(0), "info '" + text(255) + "' title '" + text(63) + "' kind 4 time 31000 "));
  expectedAssertions = {"lstrlen(szBalloonTip) < 256 (asystray)", "lstrlen(szBalloonTitle) < 64 (asystray)",
                        kCreationIcon, "uBalloonTimeout >= 10 && uBalloonTimeout <= 30 (asystray)"};
}

TEST_F(TrayLimits, OfABalloonAreReportedInTheirOrderAndTheTextsAreCut) {
  start();
  Tray tray;
  create(tray);
  shell->calls();
  EXPECT_TRUE(tray.ShowBalloon(text(256).c_str(), text(64).c_str(), 4, 31));
  EXPECT_TRUE(hasField(shell->calls().at(0), "info '" + text(255) + "' title '" + text(63) + "' kind 4 time 31000 "));
  expectedAssertions = {"lstrlen(szText) < 256 (asystray)", "lstrlen(szTitle) < 64 (asystray)", kIcon,
                        "uTimeout >= 10 && uTimeout <= 30 (asystray)"};
}

TEST_F(TrayLimits, ATimeoutOf9IsReportedButUsed) {
  start();
  Tray tray;
  create(tray);
  shell->calls();
  EXPECT_TRUE(tray.ShowBalloon("Text", "", NIIF_NONE, 9));
  EXPECT_TRUE(hasField(shell->calls().at(0), "time 9000 "));
  EXPECT_TRUE(tray.Create(nullptr, kMessage, "Tip", SV::Icon(), kNumber, FALSE, "Text", "", 0, 9));
  EXPECT_TRUE(hasField(shell->calls().at(1), "time 9000 "));
  expectedAssertions = {"uTimeout >= 10 && uTimeout <= 30 (asystray)",
                        "uBalloonTimeout >= 10 && uBalloonTimeout <= 30 (asystray)"};
}

TEST_F(TrayLimits, AWindowThatIsNoneIsReportedAndStored) {
  start();
  Tray tray;
  create(tray);
  EXPECT_FALSE(tray.SetNotificationWnd(nullptr));
  EXPECT_EQ(tray.GetNotificationWnd(), nullptr);
  expectedAssertions = {"FALSE (asystray)"};
}

TEST_F(TrayLimits, EachHasALineOfItsOwn) {
  start();
  Tray tray;
  tray.Create(nullptr, 1, text(129).c_str(), SV::Icon(), kNumber, FALSE, text(256).c_str(), text(64).c_str(), 4, 31);
  tray.SetTooltipText(text(128).c_str());
  tray.ShowBalloon(text(256).c_str(), text(64).c_str(), 4, 31);
  tray.SetNotificationWnd(nullptr);
  tray.SetCallbackMessage(1);
  tray.OnTimer(1);
  std::vector<unsigned> lines = traytest::assertionLines();
  std::sort(lines.begin(), lines.end());
  // 101 is that of a system without a tray, 113 that of an icon that no shell takes.
  EXPECT_EQ(lines, (std::vector<unsigned>{102, 103, 104, 105, 106, 107, 108, 109, 110, 111, 112, 114, 115, 116}));
  expectedAssertions = traytest::assertions();
}

TEST_F(TrayLimits, UnderSuppressionOfDialogsAreLinesOfTheDebugOutput) {
  start();
  support::DebugLines const debug;
  SV::Application::SetModalDialogSuppression(true);
  Tray tray;
  create(tray);
  EXPECT_TRUE(tray.ShowBalloon("Text", "", NIIF_NONE, 9));
  SV::Application::SetModalDialogSuppression(false);
  EXPECT_EQ(debug.of("[assertion]"), Lines{"[assertion] asystray (112): uTimeout >= 10 && uTimeout <= 30\n"});
}

// In programs of their own, with the runtime's own reaction

TEST(TrayLimitsProcess, EndAProgramOfTheConsoleThatViolatesOne) {
  support::ProgramResult const result = support::runProgram({.program = "tray_violation"});
  EXPECT_EQ(result.exitCode, 3u);
  EXPECT_EQ(result.output, "");
  EXPECT_TRUE(result.errors.find("Assertion failed: uTimeout >= 10 && uTimeout <= 30, file asystray, line 112") !=
              std::string::npos)
      << result.errors;
}

TEST(TrayLimitsProcess, LetAProgramThatViolatesOneGoOnUnderSuppressionOfDialogs) {
  support::ProgramResult const result = support::runProgram({.program = "tray_violation", .arguments = "quiet"});
  EXPECT_EQ(result.exitCode, 0u);
  EXPECT_EQ(result.output, "goes on\r\n");
  EXPECT_EQ(result.errors, "");
}

} // namespace
