// The sample product by keyboard alone, with real keys. Its window has to be in front.
#include "commands/items.hpp"
#include "modeler_run.hpp"
#include "sv0105/input.hpp"
#include "tools/winapi.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <set>

namespace {

using namespace modeler;

constexpr char kModel[] = "process \"M\"\r\nstart a \"Begin\"\r\nactivity b \"Do\"\r\nend c \"End\"\r\n"
                          "flow a b\r\nflow b c\r\n";

/// The program with a model in front, and its messages recorded.
class ModelerKeys : public testing::Test {
protected:
  void start(std::string const & options, bool isWatched = false) {
    support::writeFile(folder / "model.txt", kModel);
    run =
        std::make_unique<ProductRun>("modeler", options + " \"-model" + folder / "model.txt" +
                                                    "\" -keeplook.ini -journalout.log" + (isWatched ? " -watch" : ""));
    window = mainWindow(*run);
    ASSERT_TRUE(window);
    ASSERT_TRUE(waitForDocument(window, "M"));
    ASSERT_TRUE(bringToFront(window));
  }

  static bool bringToFront(HWND wanted) {
    return support::eventually([&] {
      SetForegroundWindow(wanted);
      return GetForegroundWindow() == wanted;
    });
  }

  GUITHREADINFO input() const {
    GUITHREADINFO info = {};
    info.cbSize = sizeof info;
    GetGUIThreadInfo(GetWindowThreadProcessId(window, nullptr), &info);
    return info;
  }
  bool isInMenu() const { return (input().flags & GUI_INMENUMODE) != 0; }

  /// The dialog that is in front of the program; null when it is the main window.
  HWND dialog() const {
    HWND const front = GetForegroundWindow();
    DWORD process = 0;
    GetWindowThreadProcessId(front, &process);
    return process == run->child().processId() && front != window ? front : nullptr;
  }

  /// Opens what a menu has, by the letters of both. While the desktop is busy a key may be lost, so it is tried again.
  HWND openBy(WORD menu, WORD item) const {
    HWND opened = nullptr;
    for (int attempt = 0; attempt < 5 && opened == nullptr; ++attempt) {
      bringToFront(window);
      svtest::pressKeys({VK_MENU, menu});
      if (!support::eventually([&] { return isInMenu(); }, 3))
        continue;
      svtest::pressKeys({item});
      support::eventually([&] { return (opened = dialog()) != nullptr; }, 5);
      if (opened == nullptr && isInMenu())
        leaveMenu();
    }
    return opened;
  }

  HWND openByCtrl(WORD letter) const {
    HWND opened = nullptr;
    for (int attempt = 0; attempt < 5 && opened == nullptr; ++attempt) {
      bringToFront(window);
      svtest::pressKeys({VK_CONTROL, letter});
      support::eventually([&] { return (opened = dialog()) != nullptr; }, 5);
    }
    return opened;
  }

  void leaveMenu() const {
    for (int press = 0; press < 3 && isInMenu(); ++press) {
      svtest::pressKeys({VK_ESCAPE});
      support::eventually([&] { return !isInMenu(); }, 1);
    }
  }

  bool closeByEscape(HWND opened) const {
    return support::eventually([&] {
      if (GetForegroundWindow() == opened)
        svtest::pressKeys({VK_ESCAPE});
      return support::waitUntilGone(opened, 1);
    });
  }

  /// Where Tab leads to, one after the other, until it is back where it began.
  std::vector<HWND> tabOrder() const {
    std::vector<HWND> order = {input().hwndFocus};
    while (order.size() < 30) {
      svtest::pressKeys({VK_TAB});
      if (!support::eventually([&] { return input().hwndFocus != order.back(); }, 3))
        break;
      HWND const next = input().hwndFocus;
      if (next == order.front())
        break;
      order.push_back(next);
    }
    return order;
  }

  support::TempFolder const folder;
  std::unique_ptr<ProductRun> run;
  HWND window = nullptr;
};

std::set<HWND> tabStopsOf(HWND dialog) {
  std::set<HWND> stops;
  for (HWND const child : support::children(dialog))
    if (IsWindowVisible(child) && IsWindowEnabled(child) && (GetWindowLongA(child, GWL_STYLE) & WS_TABSTOP) != 0)
      stops.insert(child);
  return stops;
}

/// The letters that lead to a dialog, and its title in English.
struct Door {
  char menu;
  char item;
  char const * title; ///< empty: that of the program
  bool isOwn = true;  ///< otherwise the system's, whose order is not ours
};

constexpr Door kDoors[] = {
    {'D', 'R', "Request to a URL"}, {'D', 'W', "Who is at work"}, {'D', 'M', ""}, {'H', 'C', ""}, {'H', 'A', "About"},
    {'F', 'O', "Open", false},      {'F', 'A', "Save As", false}};

/// Tab leads to each control that it can, and Return has its button.
void expectWalkable(HWND dialog, std::vector<HWND> const & order) {
  EXPECT_EQ(std::set<HWND>(order.begin(), order.end()), tabStopsOf(dialog));
  LRESULT const standard = SendMessageA(dialog, DM_GETDEFID, 0, 0);
  EXPECT_EQ(HIWORD(standard), DC_HASDEFID);
  EXPECT_TRUE(support::childById(dialog, LOWORD(standard)));
}

TEST_F(ModelerKeys, LettersOpenEachDialogTabWalksItAndEscapeClosesIt) {
  ASSERT_NO_FATAL_FAILURE(start("-lang2057"));
  for (Door const & door : kDoors) {
    SCOPED_TRACE(door.item);
    HWND const opened = openBy(static_cast<WORD>(door.menu), static_cast<WORD>(door.item));
    ASSERT_TRUE(opened);
    EXPECT_EQ(support::windowText(opened), *door.title != '\0' ? door.title : title());
    if (door.isOwn)
      expectWalkable(opened, tabOrder());
    ASSERT_TRUE(closeByEscape(opened));
    EXPECT_TRUE(support::eventually([&] { return GetForegroundWindow() == window && input().hwndFocus != nullptr; }))
        << "the keyboard is back";
  }
  EXPECT_TRUE(support::closeWindow(window));
  EXPECT_EQ(run->exitCode(), 0u);
}

TEST_F(ModelerKeys, LettersWithCtrlOpenWhatTheMenusNameThemFor) {
  ASSERT_NO_FATAL_FAILURE(start("-lang2057"));
  for (auto const & [letter, title] : {std::pair{'O', "Open"}, {'S', "Save As"}, {'F', "Find"}}) {
    SCOPED_TRACE(letter);
    HWND const opened = openByCtrl(static_cast<WORD>(letter));
    ASSERT_TRUE(opened);
    EXPECT_EQ(support::windowText(opened), title);
    ASSERT_TRUE(closeByEscape(opened));
  }
  EXPECT_TRUE(support::closeWindow(window));
  EXPECT_EQ(run->exitCode(), 0u);
}

/// The items that the record has as chosen by keys, in the order in which they came.
std::vector<unsigned> selectedItems(std::string const & record) {
  std::vector<unsigned> items;
  for (std::string const & line : linesOf(record)) {
    if (line.find("(WM_MENUSELECT)") == std::string::npos)
      continue;
    unsigned const parameter =
        static_cast<unsigned>(std::strtoul(line.c_str() + line.find("(lp: ") + 5, nullptr, 16)); // the wParam
    if ((parameter >> 16 & (MF_POPUP | MF_SYSMENU | MF_SEPARATOR)) == 0)
      items.push_back(parameter & 0xFFFF);
  }
  return items;
}

/// What Down and Right must lead to. Plug-ins and languages have their numbers by their order.
constexpr unsigned kAllItems[] = {
    FILE_OPEN_MODEL, FILE_OPEN_SAMPLE,    FILE_SAVE_AS,    FILE_PRINT_TEXT,   FILE_PRINT_DRAWING,  FILE_EXIT,
    EDIT_COPY,       EDIT_PASTE,          RAISE_USER,      RAISE_USER_GROUP,  WINDOW_START,        WINDOW_EVENTS,
    WINDOW_CASCADE,  WINDOW_TILE,         WINDOW_MINIMISE, FILE_TRIAL_RUN,    LANGUAGE_FIRST,      LANGUAGE_FIRST + 1,
    VIEW_TOOLBAR,    VIEW_OUTLINE,        VIEW_NOTES,      VIEW_STATUSBAR,    VIEW_NEXT,           VIEW_CLASSIC,
    VIEW_MODERN,     VIEW_STYLES,         PLUGIN_FIRST,    DIAGNOSTICS_WATCH, DIAGNOSTICS_REQUEST, DIAGNOSTICS_AT_WORK,
    HELP_ABOUT,      HELP_KEYS,           EDIT_FIND,       EDIT_FIND_NEXT,    ANALYSIS_TIMES,      WINDOW_LIST_FIRST,
    FILE_EXPORT_XML, FILE_EXPORT_PICTURE, HELP_CRASH};

class ModelerMenuWalk : public ModelerKeys {
protected:
  std::vector<unsigned> walked() const { return selectedItems(run->file("_kiv_hooks.txt").value_or("")); }

  std::vector<unsigned> missing() const {
    std::vector<unsigned> const all = walked();
    std::vector<unsigned> result;
    for (unsigned const item : kAllItems)
      if (std::find(all.begin(), all.end(), item) == all.end())
        result.push_back(item);
    return result;
  }

  /// Down until it comes around, or says nothing, as in the menu of the window.
  void walkDown() const {
    constexpr std::ptrdiff_t kMostItems = 20;
    std::ptrdiff_t const start = static_cast<std::ptrdiff_t>(walked().size());
    for (std::ptrdiff_t item = 0; item < kMostItems; ++item) {
      std::size_t const before = walked().size();
      svtest::pressKeys({VK_DOWN});
      if (!support::eventually([&] { return walked().size() > before; }, 0.5))
        return;
      std::vector<unsigned> const all = walked();
      if (std::count(all.begin() + start, all.end(), all.back()) > 1)
        return;
    }
  }
};

TEST_F(ModelerMenuWalk, DownAndRightLeadToEveryItem) {
  ASSERT_NO_FATAL_FAILURE(start("-lang2057", true));
  ASSERT_TRUE(support::eventually([&] {
    svtest::pressKeys({VK_MENU, 'F'});
    return support::eventually([&] { return isInMenu(); }, 2);
  }));
  constexpr int kMostMenus = 30; // more than once around, since a key may be lost while the desktop is busy
  for (int menu = 0; menu < kMostMenus && !missing().empty(); ++menu) {
    walkDown();
    svtest::pressKeys({VK_RIGHT});
  }
  EXPECT_EQ(missing(), std::vector<unsigned>());
  leaveMenu();
  EXPECT_FALSE(isInMenu());
  EXPECT_TRUE(support::closeWindow(window));
  EXPECT_EQ(run->exitCode(), 0u);
}

} // namespace
