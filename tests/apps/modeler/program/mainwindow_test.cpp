// The main window of the sample product, with all its menus, in the process of the test.
#include "apps/modeler/in_process.hpp"

#include "background/eventlog.hpp"
#include "program/mainwindow.hpp"
#include "sv0105/input.hpp"
#include "windows/documents/windowlist.hpp"

#include <algorithm>
#include <set>

using SV::String;

namespace {

char const kModel[] = "process \"Model\"\r\nstart a \"Begin\"\r\nactivity b \"First\" duration 5\r\nend c \"End\"\r\n"
                      "flow a b\r\nflow b c\r\n";

class ModelerMainWindow : public modeler::InProcess {
protected:
  ModelerMainWindow() {
    journal_.Open();
    window = std::make_unique<modeler::MainWindow>(events_, journal_, plugins_, settings_);
    support::writeFile(folder / "model.txt", kModel);
  }
  ~ModelerMainWindow() override { window.reset(); }

  HWND client() const { return window->GetClient().GethWnd(); }
  void open() { window->GetDocuments().Open((folder / "model.txt").c_str()); }

  /// As a user who opens a menu of the bar sees them.
  SV::MenuBar & menus() {
    SendMessageA(window->GethWnd(), WM_INITMENU, reinterpret_cast<WPARAM>(window->GetMenuBar()->GetHMENU()), 0);
    return *window->GetMenuBar();
  }
  SV::Menu & menu(modeler::Item id) { return *menus().GetPopupMenu(id); }
  static std::vector<std::string> textsOf(SV::Menu & menu);

  std::vector<std::string> windows() const {
    std::vector<std::string> titles;
    for (HWND const each : modeler::openWindows(client()))
      titles.emplace_back(modeler::titleOf(each).c_str());
    return titles;
  }
  std::string front() const { return window->GetActiveChild()->GetText().c_str(); }

  void press(WPARAM key) {
    PostMessageA(window->GethWnd(), WM_KEYDOWN, key, 1);
    SV::Application::Reschedule();
  }

private:
  modeler::EventLog events_;
  modeler::Journal journal_;
  modeler::Plugins plugins_;
  modeler::Settings settings_;

protected:
  std::unique_ptr<modeler::MainWindow> window;
};

std::vector<std::string> ModelerMainWindow::textsOf(SV::Menu & menu) {
  std::vector<std::string> texts;
  for (unsigned short place = 0; place < menu.GetItemCount(); ++place)
    if (unsigned short const id = menu.GetItemId(place); id != 0)
      texts.emplace_back(menu.GetItemText(id).c_str());
  return texts;
}

/// The letters after the single "~" of a menu; "" for a text without one.
std::multiset<std::string> mnemonicsOf(std::vector<std::string> const & texts) {
  std::multiset<std::string> letters;
  for (std::string const & text : texts) {
    std::size_t const mark = text.find('~');
    std::string letter = mark != std::string::npos ? text.substr(mark + 1, 1) : "";
    CharLowerBuffA(letter.data(), static_cast<DWORD>(letter.size()));
    letters.insert(letter);
  }
  return letters;
}

class ModelerMnemonics : public ModelerMainWindow, public testing::WithParamInterface<unsigned short> {};
TEST_P(ModelerMnemonics, AreInEachItemAndNoneTwiceInAMenu) {
  KivInternational::SetCurrentLanguageID(GetParam());
  open();
  std::vector<std::vector<std::string>> all{textsOf(menus())};
  SV::MenuBar & bar = menus();
  for (unsigned short place = 0; place < bar.GetItemCount(); ++place)
    all.push_back(textsOf(*bar.GetPopupMenu(bar.GetItemId(place))));
  for (std::vector<std::string> const & texts : all) {
    std::multiset<std::string> const letters = mnemonicsOf(texts);
    EXPECT_EQ(letters.count(""), 0u) << testing::PrintToString(texts);
    EXPECT_EQ(std::set<std::string>(letters.begin(), letters.end()).size(), letters.size())
        << testing::PrintToString(texts);
  }
}
INSTANTIATE_TEST_SUITE_P(Languages, ModelerMnemonics, testing::Values(2057, 1031));

TEST_F(ModelerMainWindow, ListsItsWindowsWithNumbersAndMarksTheOneInFront) {
  window->Show();
  open();
  SV::Menu & list = menu(modeler::MENU_WINDOW);
  EXPECT_STREQ(list.GetItemText(modeler::WINDOW_LIST_FIRST).c_str(), "~1 Start");
  EXPECT_STREQ(list.GetItemText(modeler::WINDOW_LIST_FIRST + 1).c_str(), "~2 Model");
  EXPECT_FALSE(list.IsItemChecked(modeler::WINDOW_LIST_FIRST));
  EXPECT_TRUE(list.IsItemChecked(modeler::WINDOW_LIST_FIRST + 1));
  list.Select(modeler::WINDOW_LIST_FIRST);
  EXPECT_EQ(front(), "Start");
  EXPECT_TRUE(list.IsItemChecked(modeler::WINDOW_LIST_FIRST));
  SendMessageA(window->GetActiveChild()->GethWnd(), WM_CLOSE, 0, 0);
  EXPECT_STREQ(menu(modeler::MENU_WINDOW).GetItemText(modeler::WINDOW_LIST_FIRST).c_str(), "~1 Model");
  EXPECT_EQ(list.GetItemPos(modeler::WINDOW_LIST_FIRST + 1), SV::MENU_ITEM_NOT_FOUND);
}

TEST_F(ModelerMainWindow, ListsNoMoreThanNineWindows) {
  for (int number = 0; number < 12; ++number) {
    std::string const file = folder / (std::to_string(number) + ".txt");
    support::writeFile(file, "process \"M~" + std::to_string(number) + "\"\r\nstart a \"A\"\r\n");
    window->GetDocuments().Open(file.c_str());
  }
  SV::Menu & list = menu(modeler::MENU_WINDOW);
  EXPECT_STREQ(list.GetItemText(modeler::WINDOW_LIST_LAST).c_str(), "~9 M~~7");
  EXPECT_EQ(list.GetItemPos(modeler::WINDOW_LIST_LAST + 1), SV::MENU_ITEM_NOT_FOUND);
  EXPECT_EQ(windows().size(), 13u);
}

TEST_F(ModelerMainWindow, BringsAFileThatIsOpenToTheFront) {
  window->Show();
  open();
  HWND const document = window->GetActiveChild()->GethWnd();
  menu(modeler::MENU_WINDOW).Select(modeler::WINDOW_LIST_FIRST);
  ASSERT_EQ(front(), "Start");
  std::string other = folder / "MODEL.TXT";
  window->GetDocuments().Open(other.c_str());
  EXPECT_EQ(window->GetActiveChild()->GethWnd(), document);
  EXPECT_EQ(windows(), (std::vector<std::string>{"Start", "Model"}));
  ShowWindow(document, SW_MINIMIZE);
  ASSERT_TRUE(IsIconic(document));
  open();
  EXPECT_FALSE(IsIconic(document));
}

TEST_F(ModelerMainWindow, OpensAFileAnewWhoseWindowHasBeenClosed) {
  open();
  SendMessageA(window->GetActiveChild()->GethWnd(), WM_CLOSE, 0, 0);
  EXPECT_EQ(windows(), (std::vector<std::string>{"Start"}));
  open();
  EXPECT_EQ(windows(), (std::vector<std::string>{"Start", "Model"}));
}

TEST_F(ModelerMainWindow, ShowsTheTimesOfTheModelInFrontInAWindowThatFollowsTheLanguage) {
  open();
  menu(modeler::MENU_VIEW).Select(modeler::ANALYSIS_TIMES);
  EXPECT_EQ(front(), "Times: Model");
  SendMessageA(client(), WM_MDINEXT, 0, 0);
  menu(modeler::MENU_LANGUAGE).Select(modeler::LANGUAGE_FIRST + 1);
  std::vector<std::string> const titles = windows();
  EXPECT_EQ(std::count(titles.begin(), titles.end(), "Zeiten: Model"), 1) << testing::PrintToString(titles);
}

TEST_F(ModelerMainWindow, ShowsItsKeysWhenF1IsPressed) {
  SV::Help ofFrame("none.chm");
  SV::Application::ChangeHelp(&ofFrame);
  SV::Application::EnableHelp(SV::HELP_BY_KEY);
  window->GetHelpCommands().Install();
  press(VK_F1);
  EXPECT_TRUE(comes([&] { return front() == "Keys"; }));
}

/// The keys that the menus name, in English.
TEST_F(ModelerMainWindow, NamesTheKeysOfItsCommands) {
  struct Row {
    modeler::Item menu;
    modeler::Item item;
    char const * text;
  };
  for (Row const & row : {Row{modeler::MENU_FILE, modeler::FILE_OPEN_MODEL, "~Open...\tCtrl+O"},
                          {modeler::MENU_FILE, modeler::FILE_SAVE_AS, "Save ~as...\tCtrl+S"},
                          {modeler::MENU_EDIT, modeler::EDIT_FIND, "~Find...\tCtrl+F"},
                          {modeler::MENU_EDIT, modeler::EDIT_FIND_NEXT, "Find ~next\tF3"},
                          {modeler::MENU_VIEW, modeler::VIEW_NEXT, "Ne~xt part\tF6"},
                          {modeler::MENU_HELP, modeler::HELP_KEYS, "~Keys\tF1"}})
    EXPECT_STREQ(menu(row.menu).GetItemText(row.item).c_str(), row.text);
}

TEST_F(ModelerMainWindow, ScrollsToTheNodeThatIsSelected) {
  window->Show();
  open();
  modeler::ProcessWindow & document = *window->GetDocuments().GetFront();
  SetWindowPos(document.GethWnd(), nullptr, 0, 0, 160, 200, SWP_NOZORDER);
  document.Select(2);
  EXPECT_EQ(document.GetSelected(), 2u);
  EXPECT_GT(GetScrollPos(document.GethWnd(), SB_HORZ), 0);
  EXPECT_STREQ(document.SelectedActivity().c_str(), "First") << "an end is no activity: the next one is taken";
}

bool hasBar(HWND window, LONG bar) { return (GetWindowLongA(window, GWL_STYLE) & bar) != 0; }

TEST_F(ModelerMainWindow, ScrollsTheStartWindowWhereItsLinesHaveNoRoom) {
  window->Show();
  HWND const start = window->GetActiveChild()->GethWnd();
  SetWindowPos(start, nullptr, 0, 0, 1000, 600, SWP_NOZORDER);
  EXPECT_FALSE(hasBar(start, WS_VSCROLL));
  SetWindowPos(start, nullptr, 0, 0, 200, 120, SWP_NOZORDER);
  EXPECT_TRUE(hasBar(start, WS_VSCROLL));
  EXPECT_TRUE(hasBar(start, WS_HSCROLL));
  SendMessageA(start, WM_VSCROLL, SB_BOTTOM, 0);
  EXPECT_GT(GetScrollPos(start, SB_VERT), 0);
  SendMessageA(start, WM_KEYDOWN, VK_UP, 1);
  SendMessageA(start, WM_VSCROLL, SB_TOP, 0);
  EXPECT_EQ(GetScrollPos(start, SB_VERT), 0);
}

TEST_F(ModelerMainWindow, HasBarsWhileADocumentLiesOutside) {
  window->Show();
  HWND const start = window->GetActiveChild()->GethWnd();
  SetWindowPos(start, nullptr, 10, 10, 300, 200, SWP_NOZORDER);
  EXPECT_TRUE(comes([&] { return !hasBar(client(), WS_HSCROLL | WS_VSCROLL); }));
  SetWindowPos(start, nullptr, -100, 10, 300, 200, SWP_NOZORDER);
  EXPECT_TRUE(comes([&] { return hasBar(client(), WS_HSCROLL); }));
  EXPECT_FALSE(hasBar(client(), WS_VSCROLL));
  RECT place = {};
  SendMessageA(client(), WM_HSCROLL, SB_LINEUP, 0);
  GetWindowRect(start, &place);
  MapWindowPoints(nullptr, client(), reinterpret_cast<POINT *>(&place), 2);
  EXPECT_GT(place.left, -100);
  SetWindowPos(start, nullptr, 10, 5000, 300, 200, SWP_NOZORDER);
  EXPECT_TRUE(comes([&] { return hasBar(client(), WS_VSCROLL) && !hasBar(client(), WS_HSCROLL); }));
  SendMessageA(start, WM_CLOSE, 0, 0);
  EXPECT_TRUE(comes([&] { return !hasBar(client(), WS_HSCROLL | WS_VSCROLL); }));
}

TEST_F(ModelerMainWindow, HasNoBarsBesideAMaximisedDocument) {
  window->Show();
  open();
  SetWindowPos(window->GetActiveChild()->GethWnd(), nullptr, -100, 10, 300, 200, SWP_NOZORDER);
  ASSERT_TRUE(comes([&] { return hasBar(client(), WS_HSCROLL); }));
  SendMessageA(client(), WM_MDIMAXIMIZE, reinterpret_cast<WPARAM>(window->GetActiveChild()->GethWnd()), 0);
  EXPECT_TRUE(comes([&] { return !hasBar(client(), WS_HSCROLL | WS_VSCROLL); }));
}

} // namespace
