// The sample product and the tray, on a desktop of the test's own with a shell of the tests.
#include "modeler_run.hpp"
#include "programs/ui/tray_shell.hpp"
#include "support/windows/private_station.hpp"

#include "tools/winapi.hpp"

#include <gtest/gtest.h>

namespace {

constexpr WPARAM kMinimise = 121;
constexpr WPARAM kTrialRun = 122;
constexpr UINT kNumber = 1;

constexpr char kModel[] =
    "process \"Short\"\r\nstart a \"A\"\r\nactivity b \"B\" duration 60\r\nend c \"C\"\r\nflow a b\r\nflow b c\r\n";
constexpr char kPathless[] = "process \"Pathless\"\r\nstart a \"A\"\r\nend c \"C\"\r\n";

class ModelerTray : private support::PrivateStation, public testing::Test {
protected:
  void startShell() {
    shell = std::make_unique<support::ChildProcess>(support::ProgramStart{.program = "tray_shell", .desktop = name()});
    ASSERT_TRUE(shell->waitForOutput("begun"));
    bar = FindWindowA("Shell_TrayWnd", nullptr);
  }

  void startModeler(std::string const & model = kModel, std::string const & language = "-langen") {
    support::writeFile("model.txt", model);
    run = std::make_unique<ProductRun>(support::ProgramStart{.program = "modeler",
                                                             .arguments = language + " -modelmodel.txt -journalout.log",
                                                             .workingFolder = currentFolder(),
                                                             .desktop = name()});
    window = modeler::mainWindow(*run);
    ASSERT_NE(window, nullptr);
  }

  static std::string currentFolder() {
    char folder[MAX_PATH] = "";
    GetCurrentDirectoryA(sizeof folder, folder);
    return folder;
  }

  std::string journal() const { return support::readFile("out.log").value_or(""); }
  bool waitForJournal(std::string const & line) const {
    return support::eventually([&] { return journal().find(line + "\r\n") != std::string::npos; });
  }

  void choose(WPARAM item) { PostMessageA(window, WM_COMMAND, item, 0); }
  long icons() const { return static_cast<long>(SendMessageA(bar, trayshell::Count, 0, 0)); }
  bool waitForIcons(long count) const {
    return support::eventually([&] { return icons() == count; });
  }
  void mouse(LPARAM message) { PostMessageA(bar, trayshell::Mouse, kNumber, message); }
  bool waitUntilVisible(bool visible) const {
    return support::eventually([&] { return (IsWindowVisible(window) != FALSE) == visible; });
  }

  /// The open menu of the icon, once it is there.
  HWND menu() { return support::waitForWindow({.processId = run->child().processId(), .className = "#32768"}); }

  std::unique_ptr<support::ChildProcess> shell;
  HWND bar = nullptr;
  std::unique_ptr<ProductRun> run;
  HWND window = nullptr;
};

TEST_F(ModelerTray, TakesTheMainWindowAndGivesItBackByADoubleClick) {
  startShell();
  startModeler();
  EXPECT_EQ(icons(), 0);
  choose(kMinimise);
  EXPECT_TRUE(waitUntilVisible(false));
  EXPECT_TRUE(waitForIcons(1));
  EXPECT_TRUE(waitForJournal("tray: minimised"));
  EXPECT_TRUE(shell->waitForOutput("tip 'KIVARA Modeler'"));
  mouse(WM_LBUTTONDBLCLK);
  EXPECT_TRUE(waitUntilVisible(true));
  EXPECT_TRUE(waitForIcons(0));
  EXPECT_TRUE(waitForJournal("tray: restored"));
  EXPECT_TRUE(support::closeWindow(window));
  EXPECT_EQ(run->exitCode(), 0u);
}

TEST_F(ModelerTray, HasAMenuInBothLanguagesThatRestoresAndExits) {
  startShell();
  struct {
    char const * language;
    char const * restore;
    char const * exit;
  } const rows[] = {{"-langen", "&Restore", "E&xit"}, {"-langde", "&Wiederherstellen", "&Beenden"}};
  for (auto const & row : rows) {
    startModeler(kModel, row.language);
    choose(kMinimise);
    EXPECT_TRUE(waitForIcons(1));
    mouse(WM_RBUTTONUP);
    HWND const first = menu();
    PostMessageA(first, WM_KEYDOWN, VK_DOWN, 1);
    PostMessageA(first, WM_KEYDOWN, VK_RETURN, 1);
    EXPECT_TRUE(waitUntilVisible(true)) << row.restore;
    choose(kMinimise);
    EXPECT_TRUE(waitUntilVisible(false));
    EXPECT_TRUE(waitForIcons(1));
    mouse(WM_RBUTTONUP);
    HWND const second = menu();
    PostMessageA(second, WM_KEYDOWN, VK_UP, 1);
    PostMessageA(second, WM_KEYDOWN, VK_RETURN, 1);
    EXPECT_EQ(run->exitCode(), 0u) << row.exit;
    EXPECT_NE(journal().find("tray: exit\r\n"), std::string::npos);
    EXPECT_TRUE(waitForIcons(0));
  }
}

TEST_F(ModelerTray, ReportsTheEndOfATrialRunInABalloonWhileTheWindowIsAway) {
  startShell();
  startModeler();
  choose(kTrialRun);
  EXPECT_TRUE(waitForJournal("trial run: a > b > c"));
  EXPECT_TRUE(shell->waitForOutput("tip 'Trial run of 'Short''"));
  choose(kMinimise);
  EXPECT_TRUE(waitUntilVisible(false));
  EXPECT_TRUE(waitForJournal("trial run ended: Short"));
  EXPECT_TRUE(
      shell->waitForOutput("info 'The trial run of 'Short' has ended.' title 'KIVARA Modeler' kind 1 time 10000 "));
  EXPECT_EQ(icons(), 1);
  mouse(WM_LBUTTONDBLCLK);
  EXPECT_TRUE(waitUntilVisible(true));
  EXPECT_TRUE(waitForIcons(0));
}

TEST_F(ModelerTray, ReportsTheEndInGermanToo) {
  startShell();
  startModeler(kModel, "-langde");
  choose(kTrialRun);
  EXPECT_TRUE(shell->waitForOutput("info 'Der Probelauf von 'Short' ist beendet.' title 'KIVARA Modeler' "));
}

TEST_F(ModelerTray, BlinksDuringATrialRun) {
  startShell();
  startModeler(
      "process \"Long\"\r\nstart a \"A\"\r\nactivity b \"B\" duration 6000\r\nend c \"C\"\r\nflow a b\r\nflow b c\r\n");
  choose(kTrialRun);
  EXPECT_TRUE(waitForIcons(1));
  EXPECT_TRUE(support::eventually([&] {
    std::string const output = shell->output();
    std::size_t const first = output.find("modify 1 flags 2 ");
    return first != std::string::npos && output.find("modify 1 flags 2 ", first + 1) != std::string::npos;
  }));
}

TEST_F(ModelerTray, BringsItsIconToAShellThatBeginsAgain) {
  startShell();
  startModeler();
  choose(kMinimise);
  EXPECT_TRUE(waitForIcons(1));
  PostMessageA(bar, trayshell::End, 0, 0);
  shell->waitForEnd();
  startShell();
  EXPECT_TRUE(waitForIcons(1));
  mouse(WM_LBUTTONDBLCLK);
  EXPECT_TRUE(waitUntilVisible(true));
}

TEST_F(ModelerTray, LeavesItsWindowWhereItIsWithoutAShell) {
  startModeler();
  choose(kMinimise);
  support::BoxTexts const box = modeler::answerOwnBox(*run, IDOK);
  EXPECT_EQ(box.texts, std::vector<std::string>{"The taskbar has no notification area: the window stays where it is."});
  EXPECT_TRUE(IsWindowVisible(window));
  choose(kTrialRun);
  EXPECT_TRUE(waitForJournal("trial run ended: Short"));
}

TEST_F(ModelerTray, HasNoIconOfAWindowThatStayedWhenAShellComes) {
  startModeler();
  choose(kMinimise);
  modeler::answerOwnBox(*run, IDOK);
  startShell();
  SendMessageA(window, WM_NULL, 0, 0); // the program has heard of the shell
  EXPECT_EQ(icons(), 0);
}

TEST_F(ModelerTray, HasNoTrialRunOfAModelWithoutAPath) {
  startShell();
  startModeler(kPathless);
  choose(kTrialRun);
  EXPECT_EQ(modeler::answerOwnBox(*run, IDOK).texts, std::vector<std::string>{"No path leads from a start to an end."});
  EXPECT_EQ(icons(), 0);
}

} // namespace
