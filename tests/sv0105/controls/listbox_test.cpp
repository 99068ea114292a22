#include "sv0105/controls/dialogtest.hpp"

namespace {

/// Both kinds of lists.
class ListBox : public svtest::DialogTest, public testing::WithParamInterface<SV::WinBits> {
protected:
  ListBox() {
    list.SetPosSizePixel({0, 0}, {120, 100});
    list.Show();
  }

  SV::ModalDialog dialog{nullptr};
  SV::ListBox list{&dialog, GetParam()};
};

TEST_P(ListBox, KeepsItsEntriesInTheirOrder) {
  EXPECT_EQ(list.InsertEntry("M\xE4rz"), 0);
  EXPECT_EQ(list.InsertEntry("Mai"), 1);
  EXPECT_EQ(list.InsertEntry("April", 1), 1);
  EXPECT_EQ(list.InsertEntry("", 99), 3);
  EXPECT_EQ(list.GetEntryCount(), 4);
  EXPECT_STREQ(list.GetEntry(0).c_str(), "M\xE4rz");
  EXPECT_STREQ(list.GetEntry(1).c_str(), "April");
  EXPECT_STREQ(list.GetEntry(2).c_str(), "Mai");
  EXPECT_STREQ(list.GetEntry(3).c_str(), "");
  EXPECT_EQ(list.GetEntryPos("Mai"), 2);
  EXPECT_EQ(list.GetEntryPos("MAI"), SV::LISTBOX_ENTRY_NOTFOUND);
  EXPECT_TRUE(list.RemoveEntry(0));
  EXPECT_EQ(list.GetEntryPos("Mai"), 1);
  list.Clear();
  EXPECT_EQ(list.GetEntryCount(), 0);
}

TEST_P(ListBox, PassesOverPositionsThatAreNotThere) {
  list.InsertEntry("one");
  for (long position : {-1L, 1L, 0x7FFFFFFFL}) {
    EXPECT_STREQ(list.GetEntry(position).c_str(), "") << position;
    EXPECT_FALSE(list.RemoveEntry(position)) << position;
    EXPECT_FALSE(list.SelectEntryPos(position)) << position;
  }
  EXPECT_EQ(list.GetSelectEntryPos(), SV::LISTBOX_ENTRY_NOTFOUND);
}

TEST_P(ListBox, TakesAVeryLongEntry) {
  std::string const text(1'000'000, 'x');
  list.InsertEntry(text.c_str());
  EXPECT_EQ(textOf(list.GetEntry(0)), text);
}

TEST_P(ListBox, ReportsWhatTheUserSelectsAndNotWhatTheProgramDoes) {
  for (char const * text : {"a", "b", "c"})
    list.InsertEntry(text);
  std::vector<long> selected;
  list.ChangeSelectHdl([&](SV::ListBox * of) { selected.push_back(of->GetSelectEntryPos()); });
  EXPECT_TRUE(list.SelectEntryPos(0));
  EXPECT_TRUE(selected.empty());
  script->key(VK_DOWN).key(VK_DOWN).key(VK_UP).then([&] { dialog.EndDialog(); });
  dialog.Execute();
  EXPECT_EQ(selected, (std::vector<long>{1, 2, 1}));
  list.SetNoSelection();
  EXPECT_EQ(list.GetSelectEntryPos(), SV::LISTBOX_ENTRY_NOTFOUND);
}

class DropDown : public svtest::DialogTest {
protected:
  static long fieldHeight(SV::ListBox const & list) {
    return list.LogicToPixel(SV::Size{0, 13}, SV::MAP_APPFONT).height;
  }
};

TEST_F(DropDown, IsAsHighAsAFieldWhenItIsClosed) {
  for (long const height : {13L, 26L, 52L}) { // at 200 percent of the screen a font has twice as many pixels
    SV::Application::ChangeAppFont(SV::Font("Arial", {0, height}));
    SV::ModalDialog dialog(nullptr);
    SV::ListBox list(&dialog, SV::WB_DROPDOWN);
    list.SetPosSizePixel({10, 10}, {100, 200});
    EXPECT_EQ(list.GetSizePixel().height, fieldHeight(list)) << height;
    EXPECT_GE(list.GetSizePixel().height, height) << "room for a line";
  }
}

TEST_F(DropDown, GrowsWithItsFont) {
  SV::ModalDialog dialog(nullptr);
  SV::ListBox list(&dialog, SV::WB_DROPDOWN);
  list.SetPosSizePixel({10, 10}, {100, 200});
  SV::Font const large("Arial", {0, 40});
  list.ChangeFont(large);
  SV::Application::ChangeAppFont(large);
  EXPECT_EQ(list.GetSizePixel().height, fieldHeight(list)) << "of this font";
}

INSTANTIATE_TEST_SUITE_P(Kinds, ListBox, testing::Values(SV::WB_BORDER, 0x811));

} // namespace
