#include "windows/parts/arrangement.hpp"

#include <gtest/gtest.h>

#include <ostream>

namespace SV {
void PrintTo(Rectangle const & area, std::ostream * out) {
  *out << area.Left() << ", " << area.Top() << ", " << area.GetWidth() << " x " << area.GetHeight();
}
} // namespace SV

namespace {

using modeler::arrange;
using modeler::Arrangement;
using modeler::PartSizes;
using SV::Rectangle;

TEST(ArrangedParts, StandAroundTheDocuments) {
  Arrangement const all = arrange({1000, 700}, {30, 20, 210, true, true});
  EXPECT_EQ(all.toolBar, Rectangle({0, 0}, {1000, 30}));
  EXPECT_EQ(all.statusBar, Rectangle({0, 680}, {1000, 20}));
  EXPECT_EQ(all.outline, Rectangle({0, 30}, {210, 390}));
  EXPECT_EQ(all.notes, Rectangle({0, 420}, {210, 260}));
  EXPECT_EQ(all.documents, Rectangle({210, 30}, {790, 650}));
}

TEST(ArrangedParts, LeaveTheirRoomWhenTheyAreHidden) {
  Arrangement const none = arrange({1000, 700}, {});
  EXPECT_EQ(none.documents, Rectangle({0, 0}, {1000, 700}));
  for (Rectangle const & area : {none.toolBar, none.statusBar, none.outline, none.notes})
    EXPECT_TRUE(area.IsEmpty());
}

TEST(ArrangedParts, GiveAPaneTheRoomOfTheOther) {
  Arrangement const outline = arrange({1000, 700}, {0, 0, 210, true, false});
  EXPECT_EQ(outline.outline, Rectangle({0, 0}, {210, 700}));
  EXPECT_TRUE(outline.notes.IsEmpty());
  Arrangement const notes = arrange({1000, 700}, {0, 0, 210, false, true});
  EXPECT_TRUE(notes.outline.IsEmpty());
  EXPECT_EQ(notes.notes, Rectangle({0, 0}, {210, 700}));
  EXPECT_EQ(notes.documents, Rectangle({210, 0}, {790, 700}));
}

TEST(ModelerKeyboard, GoesAroundThePartsThatAreShown) {
  using enum modeler::KeyboardPlace;
  struct Row {
    modeler::KeyboardPlace now;
    bool hasOutline;
    bool hasNotes;
    modeler::KeyboardPlace next;
  };
  for (Row const & row :
       {Row{Documents, true, true, Outline}, Row{Outline, true, true, Notes}, Row{Notes, true, true, Documents},
        Row{Documents, false, true, Notes}, Row{Notes, false, true, Documents}, Row{Documents, true, false, Outline},
        Row{Outline, true, false, Documents}, Row{Documents, false, false, Documents}})
    EXPECT_EQ(modeler::nextPlace(row.now, row.hasOutline, row.hasNotes), row.next);
}

TEST(ArrangedParts, TakeNoMoreThanThereIs) {
  for (SV::Size const size :
       {SV::Size{0, 0}, SV::Size{1, 1}, SV::Size{100, 25}, SV::Size{100, 40}, SV::Size{300, 60}}) {
    Arrangement const all = arrange(size, {30, 20, 210, true, true});
    long heights = all.toolBar.GetHeight() + all.documents.GetHeight() + all.statusBar.GetHeight();
    EXPECT_EQ(heights, size.height);
    EXPECT_EQ(all.outline.GetWidth() + all.documents.GetWidth(), size.width);
    for (Rectangle const & area : {all.toolBar, all.statusBar, all.outline, all.notes, all.documents}) {
      EXPECT_GE(area.GetWidth(), 0);
      EXPECT_GE(area.GetHeight(), 0);
    }
  }
}

} // namespace
