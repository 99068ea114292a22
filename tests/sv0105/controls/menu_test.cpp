#include "sv0105/application/testapplication.hpp"

#include "support/imports/import_hook.hpp"

#include <memory>
#include <optional>

namespace {

using SV::Menu;
using SV::MenuBar;
using SV::PopupMenu;

std::string systemText(HMENU menu, int position) {
  char text[100] = "";
  GetMenuStringA(menu, static_cast<UINT>(position), text, sizeof text, MF_BYPOSITION);
  return text;
}

class MenuTest : public ToolkitTest {};

TEST_F(MenuTest, HasItsItemsInOrderAlsoForTheSystem) {
  PopupMenu menu;
  EXPECT_EQ(menu.GetItemCount(), 0);
  EXPECT_TRUE(menu.InsertItem(10, "~Open"));
  menu.InsertSeparator();
  EXPECT_TRUE(menu.InsertItem(12, "E~xit"));
  EXPECT_TRUE(menu.InsertItem(11, "~New", 0));
  EXPECT_TRUE(menu.InsertItem(13, "Save", 2));
  struct {
    unsigned short id;
    char const * text;
    char const * systemText;
  } const rows[] = {
      {11, "~New", "&New"}, {10, "~Open", "&Open"}, {13, "Save", "Save"}, {0, "", ""}, {12, "E~xit", "E&xit"}};
  ASSERT_EQ(menu.GetItemCount(), 5);
  ASSERT_EQ(GetMenuItemCount(menu.GetHMENU()), 5);
  for (int i = 0; i < 5; ++i) {
    EXPECT_EQ(menu.GetItemId(static_cast<unsigned short>(i)), rows[i].id);
    EXPECT_EQ(GetMenuItemID(menu.GetHMENU(), i), rows[i].id);
    EXPECT_EQ(systemText(menu.GetHMENU(), i), rows[i].systemText);
    EXPECT_STREQ(menu.GetItemText(rows[i].id).c_str(), rows[i].text);
  }
  EXPECT_NE(GetMenuState(menu.GetHMENU(), 3, MF_BYPOSITION) & MF_SEPARATOR, 0u);
  EXPECT_EQ(menu.GetItemPos(13), 2);
}

UINT systemState(Menu const & menu, UINT id) { return GetMenuState(menu.GetHMENU(), id, MF_BYCOMMAND); }

TEST_F(MenuTest, MarksAndDisablesItemsWhichANewTextLeaves) {
  PopupMenu menu;
  menu.InsertItem(1, "One");
  menu.InsertItem(2, "Two");
  EXPECT_FALSE(menu.IsItemChecked(2));
  EXPECT_TRUE(menu.IsItemEnabled(2));
  EXPECT_TRUE(menu.CheckItem(2));
  EXPECT_EQ(systemState(menu, 2), UINT{MF_CHECKED});
  EXPECT_TRUE(menu.EnableItem(2, false));
  EXPECT_EQ(systemState(menu, 2), UINT{MF_CHECKED | MF_GRAYED | MF_DISABLED});
  menu.SetItemText(2, "Deux");
  EXPECT_TRUE(menu.IsItemChecked(2));
  EXPECT_FALSE(menu.IsItemEnabled(2));
  EXPECT_EQ(systemState(menu, 2), UINT{MF_CHECKED | MF_GRAYED | MF_DISABLED});
  EXPECT_EQ(systemState(menu, 1), 0u);
  EXPECT_TRUE(menu.CheckItem(2, false));
  EXPECT_TRUE(menu.EnableItem(2));
  EXPECT_FALSE(menu.IsItemChecked(2));
  EXPECT_TRUE(menu.IsItemEnabled(2));
  EXPECT_EQ(systemState(menu, 2), 0u);
}

TEST_F(MenuTest, AnswersWithNothingForItemsThatItDoesNotHave) {
  PopupMenu menu;
  menu.InsertSeparator();
  menu.InsertItem(5, "Five");
  EXPECT_EQ(menu.GetItemId(2), 0);
  EXPECT_EQ(menu.GetItemId(0xFFFF), 0);
  EXPECT_EQ(menu.GetItemPos(6), SV::MENU_ITEM_NOT_FOUND);
  EXPECT_EQ(menu.GetItemPos(0), SV::MENU_ITEM_NOT_FOUND);
  EXPECT_EQ(menu.GetItemText(6).Len(), 0);
  EXPECT_EQ(menu.GetPopupMenu(6), nullptr);
  EXPECT_FALSE(menu.SetItemText(6, "x"));
  EXPECT_FALSE(menu.SetPopupMenu(6, nullptr));
  EXPECT_FALSE(menu.CheckItem(6));
  EXPECT_FALSE(menu.IsItemChecked(6));
  EXPECT_FALSE(menu.EnableItem(6));
  EXPECT_FALSE(menu.IsItemEnabled(6));
  EXPECT_FALSE(menu.RemoveItem(2));
  EXPECT_EQ(menu.GetItemCount(), 2);
}

HMENU WINAPI refuseMenu() {
  SetLastError(ERROR_NOT_ENOUGH_MEMORY);
  return nullptr;
}

TEST_F(MenuTest, ThatTheSystemRefusesRaisesAnExceptionAndKeepsItsItems) {
  support::replaceImports(GetModuleHandleA("SV0105.dll"), "USER32.dll",
                          {{"CreatePopupMenu", reinterpret_cast<void *>(refuseMenu)}});
  PopupMenu menu;
  ASSERT_EQ(application.exceptions.size(), 1u);
  EXPECT_EQ(application.exceptions[0].code, 0x200);
  EXPECT_EQ(application.exceptions[0].arg, DWORD{ERROR_NOT_ENOUGH_MEMORY});
  EXPECT_EQ(menu.GetHMENU(), nullptr);
  menu.InsertItem(5, "Five");
  EXPECT_STREQ(menu.GetItemText(5).c_str(), "Five");
  EXPECT_TRUE(menu.SetItemText(5, "5"));
  EXPECT_STREQ(menu.GetItemText(5).c_str(), "5");
  EXPECT_TRUE(menu.RemoveItem(0));
  EXPECT_EQ(menu.GetItemCount(), 0);
}

TEST_F(MenuTest, RefusesIdentifiersOutOfRangeAndTwice) {
  PopupMenu menu;
  EXPECT_FALSE(menu.InsertItem(0, "zero"));
  EXPECT_TRUE(menu.InsertItem(1, "first"));
  EXPECT_FALSE(menu.InsertItem(1, "again"));
  EXPECT_TRUE(menu.InsertItem(SV::MENU_ITEM_MAX_ID, "last"));
  EXPECT_FALSE(menu.InsertItem(SV::MENU_ITEM_MAX_ID + 1, "beyond"));
  EXPECT_EQ(menu.GetItemCount(), 2);
}

TEST_F(MenuTest, WritesTextsAsTheSystemWantsThem) {
  PopupMenu menu;
  struct {
    char const * text;
    char const * systemText;
  } const rows[] = {{"~File", "&File"}, {"F~ormat", "F&ormat"}, {"This & that", "This && that"},
                    {"End~", "End~"},   {"~A~B", "&A~B"},       {"", ""},
                    {"~~", "~"},        {"~~~A", "~&A"},        {"~&", "&&&"}};
  unsigned short id = 0;
  for (auto const & row : rows) {
    ASSERT_TRUE(menu.InsertItem(++id, row.text));
    EXPECT_EQ(systemText(menu.GetHMENU(), id - 1), row.systemText) << row.text;
    EXPECT_STREQ(menu.GetItemText(id).c_str(), row.text);
  }
}

TEST_F(MenuTest, ChangesTextsAndRemovesItemsInTheSystemToo) {
  PopupMenu menu;
  menu.InsertItem(1, "One");
  menu.InsertItem(2, "Two");
  menu.InsertItem(3, "Three");
  EXPECT_TRUE(menu.SetItemText(2, "Zwei"));
  EXPECT_EQ(systemText(menu.GetHMENU(), 1), "Zwei");
  EXPECT_TRUE(menu.SetItemText(1, "Eins"));
  EXPECT_EQ(systemText(menu.GetHMENU(), 0), "Eins");
  EXPECT_TRUE(menu.RemoveItem(1));
  EXPECT_EQ(GetMenuItemCount(menu.GetHMENU()), 2);
  EXPECT_EQ(systemText(menu.GetHMENU(), 1), "Three");
  EXPECT_EQ(menu.GetItemPos(3), 1);
}

TEST_F(MenuTest, HangsUnderAnItem) {
  MenuBar bar;
  PopupMenu file;
  bar.InsertItem(1, "~File");
  EXPECT_TRUE(bar.SetPopupMenu(1, &file));
  EXPECT_EQ(bar.GetPopupMenu(1), &file);
  EXPECT_EQ(GetSubMenu(bar.GetHMENU(), 0), file.GetHMENU());
  EXPECT_EQ(bar.GetItemId(0), 1);
  EXPECT_EQ(systemText(bar.GetHMENU(), 0), "&File");
  EXPECT_TRUE(bar.SetPopupMenu(1, nullptr));
  EXPECT_EQ(GetSubMenu(bar.GetHMENU(), 0), nullptr);
  EXPECT_TRUE(IsMenu(file.GetHMENU()));
}

TEST_F(MenuTest, HangsInOnePlaceOnly) {
  MenuBar bar;
  PopupMenu menu;
  bar.InsertItem(1, "One");
  bar.InsertItem(2, "Two");
  bar.SetPopupMenu(1, &menu);
  bar.SetPopupMenu(2, &menu);
  EXPECT_EQ(bar.GetPopupMenu(1), nullptr);
  EXPECT_EQ(bar.GetPopupMenu(2), &menu);
}

TEST_F(MenuTest, DoesNotHangBelowItself) {
  PopupMenu upper;
  PopupMenu lower;
  upper.InsertItem(1, "Lower");
  lower.InsertItem(1, "Upper");
  EXPECT_FALSE(upper.SetPopupMenu(1, &upper));
  EXPECT_TRUE(upper.SetPopupMenu(1, &lower));
  EXPECT_FALSE(lower.SetPopupMenu(1, &upper));
}

TEST_F(MenuTest, AndWhatHangsFromItMayDieInAnyOrder) {
  auto bar = std::make_unique<MenuBar>();
  auto file = std::make_unique<PopupMenu>();
  bar->InsertItem(1, "File");
  bar->SetPopupMenu(1, file.get());
  file.reset();
  EXPECT_EQ(bar->GetPopupMenu(1), nullptr);
  EXPECT_EQ(GetSubMenu(bar->GetHMENU(), 0), nullptr);
  file = std::make_unique<PopupMenu>();
  file->InsertItem(7, "Seven");
  bar->SetPopupMenu(1, file.get());
  bar.reset();
  EXPECT_EQ(GetMenuItemCount(file->GetHMENU()), 1);
  bar = std::make_unique<MenuBar>();
  bar->InsertItem(1, "File");
  bar->SetPopupMenu(1, file.get());
  EXPECT_TRUE(bar->RemoveItem(0));
  EXPECT_TRUE(IsMenu(file->GetHMENU()));
}

class FrameMenuTest : public ToolkitTest {
protected:
  FrameMenuTest() {
    file.InsertItem(10, "Open");
    file.InsertItem(11, "More");
    file.SetPopupMenu(11, &more);
    more.InsertItem(20, "Most");
    bar.InsertItem(1, "File");
    bar.SetPopupMenu(1, &file);
    bar.InsertItem(2, "Help");
    frame.SetMenuBar(&bar);
  }
  ~FrameMenuTest() override { frame.SetMenuBar(nullptr); }

  void choose(unsigned short id) { SendMessageA(frame.GethWnd(), WM_COMMAND, id, 0); }

  Menu::SelectHandler recordAs(char const * name) {
    return [this, name](unsigned short id) { chosen.push_back(name + std::to_string(id)); };
  }

  SV::MDIFrame frame{"Frame"};
  PopupMenu more;
  PopupMenu file;
  MenuBar bar;
  std::vector<std::string> chosen;
};

TEST_F(FrameMenuTest, IsTheMenuOfTheSystemWindow) {
  EXPECT_EQ(frame.GetMenuBar(), &bar);
  EXPECT_EQ(::GetMenu(frame.GethWnd()), bar.GetHMENU());
  EXPECT_EQ(frame.SetMenuBar(nullptr), &bar);
  EXPECT_EQ(::GetMenu(frame.GethWnd()), nullptr);
  EXPECT_TRUE(IsMenu(bar.GetHMENU()));
}

MenuBar * drawnBar = nullptr;
std::vector<std::string> drawings;

/// In place of the system's function.
BOOL WINAPI noteDrawing(HWND) {
  HMENU const menu = drawnBar->GetHMENU();
  std::string items;
  for (int i = 0; i < GetMenuItemCount(menu); ++i)
    items += systemText(menu, i) + (GetSubMenu(menu, i) != nullptr ? "> " : " ");
  drawings.push_back(items + std::to_string(drawnBar->GetItemCount()));
  return TRUE;
}

TEST_F(FrameMenuTest, IsDrawnAnewWhenAChangeIsDone) {
  support::replaceImports(GetModuleHandleA("SV0105.dll"), "USER32.dll",
                          {{"DrawMenuBar", reinterpret_cast<void *>(noteDrawing)}});
  drawnBar = &bar;
  PopupMenu help;
  bar.SetPopupMenu(2, &help);
  bar.SetItemText(2, "Info");
  bar.InsertItem(3, "Last");
  bar.RemoveItem(0);
  EXPECT_EQ(drawings,
            (std::vector<std::string>{"File> Help> 2", "File> Info> 2", "File> Info> Last 3", "Info> Last 2"}));
  bar.SetPopupMenu(2, nullptr);
}

TEST_F(FrameMenuTest, NamesTheMenuThatTheItemIsIn) {
  bar.ChangeSelectHdl(recordAs("bar"));
  file.ChangeSelectHdl(recordAs("file"));
  more.ChangeSelectHdl(recordAs("more"));
  for (unsigned short id : {10, 20, 2})
    choose(id);
  EXPECT_EQ(chosen, (std::vector<std::string>{"file10", "more20", "bar2"}));
}

TEST_F(FrameMenuTest, ReportsToTheNextMenuAboveThatHasAHandler) {
  bar.ChangeSelectHdl(recordAs("bar"));
  choose(20);
  EXPECT_EQ(chosen, std::vector<std::string>{"bar20"});
  file.ChangeSelectHdl(recordAs("file"));
  choose(20);
  EXPECT_EQ(chosen.back(), "file20");
}

TEST_F(FrameMenuTest, ReportsNoItemThatOnlyOpensAMenuOrIsNotThere) {
  bar.ChangeSelectHdl(recordAs("bar"));
  for (unsigned short id : {0, 1, 11, 99})
    choose(id);
  EXPECT_TRUE(chosen.empty());
}

TEST_F(FrameMenuTest, MayChangeItsHandlerWhileItRuns) {
  bar.ChangeSelectHdl([this](unsigned short) {
    bar.ChangeSelectHdl(recordAs("next"));
    chosen.push_back("first");
  });
  choose(2);
  choose(2);
  EXPECT_EQ(chosen, (std::vector<std::string>{"first", "next2"}));
}

TEST_F(FrameMenuTest, MovesToAnotherFrame) {
  SV::MDIFrame other("Other");
  EXPECT_EQ(other.SetMenuBar(&bar), nullptr);
  EXPECT_EQ(frame.GetMenuBar(), nullptr);
  EXPECT_EQ(::GetMenu(frame.GethWnd()), nullptr);
  EXPECT_EQ(::GetMenu(other.GethWnd()), bar.GetHMENU());
}

TEST_F(FrameMenuTest, OutlivesItsFrameAndLeavesItWhenItDies) {
  MenuBar survivor;
  {
    SV::MDIFrame shortLived("Short");
    shortLived.SetMenuBar(&survivor);
    DestroyWindow(shortLived.GethWnd());
    EXPECT_TRUE(IsMenu(survivor.GetHMENU()));
  }
  EXPECT_TRUE(IsMenu(survivor.GetHMENU()));
  {
    MenuBar shortLived;
    frame.SetMenuBar(&shortLived);
  }
  EXPECT_EQ(frame.GetMenuBar(), nullptr);
  EXPECT_EQ(::GetMenu(frame.GethWnd()), nullptr);
}

TEST_F(FrameMenuTest, KeepsItsPositionsBesideTheItemsOfAMaximisedChild) {
  SV::MDIChild child(frame, "Child");
  frame.Show();
  child.Show();
  SendMessageA(frame.GetClient().GethWnd(), WM_MDIMAXIMIZE, reinterpret_cast<WPARAM>(child.GethWnd()), 0);
  ASSERT_GT(GetMenuItemCount(bar.GetHMENU()), 2);
  EXPECT_EQ(bar.GetItemCount(), 2);
  EXPECT_TRUE(bar.InsertItem(3, "Window", 1));
  EXPECT_TRUE(bar.InsertItem(4, "First", 0));
  std::vector<std::string> texts;
  for (int i = 0; i < GetMenuItemCount(bar.GetHMENU()); ++i)
    if (std::string const text = systemText(bar.GetHMENU(), i); !text.empty())
      texts.push_back(text);
  EXPECT_EQ(texts, (std::vector<std::string>{"First", "File", "Window", "Help"}));
  EXPECT_EQ(systemText(bar.GetHMENU(), 0), "") << "the child's own menu comes first";
  EXPECT_EQ(bar.GetItemId(2), 3);
}

} // namespace
