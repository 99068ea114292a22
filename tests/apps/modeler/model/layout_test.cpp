// What a layout looks like.
#include "layout_checks.hpp"

#include <gtest/gtest.h>

using SV::Point;
using SV::Size;
using SV::String;

namespace modeler {
namespace {

Layout layoutOf(std::string const & flows) { return layOut(modelOf(flows), plainTexts()); }

Point middleOf(Box const & box) {
  return {box.area.TopLeft().x + box.area.GetSize().width / 2, box.area.TopLeft().y + box.area.GetSize().height / 2};
}

Box boxOf(NodeKind kind, char const * text, long duration = 0) {
  return layOut({"", {{kind, "a", text, duration}}, {}}, plainTexts()).boxes[0];
}

TEST(Layout, BreaksTextsAtTheWidthOfNineLines) {
  Box const box = boxOf(NodeKind::Activity, "Hand over to the carrier of the goods", 10);
  ASSERT_EQ(box.lines.size(), 3u);
  EXPECT_EQ(box.lines[0].text, "Hand over to the");
  EXPECT_EQ(box.lines[1].text, "carrier of the goods");
  EXPECT_EQ(box.lines[2].text, "10 min");
  EXPECT_TRUE(box.lines[2].isDuration);
}

TEST(Layout, GivesAWordThatIsTooLongTheWidthOfAFullLine) {
  Box const box = boxOf(NodeKind::Activity, "abcdefghijklmnopqrstuvwxyz");
  ASSERT_EQ(box.lines.size(), 1u);
  EXPECT_EQ(box.lines[0].area.GetSize().width, 9 * 16);
}

TEST(Layout, LeavesNoRoomForADurationThatIsNotShown) {
  EXPECT_EQ(boxOf(NodeKind::Activity, "Text").lines.size(), 1u);
  EXPECT_EQ(boxOf(NodeKind::Activity, "Text", 5).lines.size(), 2u);
}

TEST(Layout, NeverCutsADuration) {
  TextFacts facts = plainTexts();
  facts.duration = [](modeler::Node const &) { return String("a duration that is worded at length"); };
  Layout const layout = layOut({"", {{NodeKind::Activity, "a", "short", 5}}, {}}, facts);
  EXPECT_EQ(layout.boxes[0].lines[1].area.GetSize().width, 35 * 7);
}

TEST(Layout, LetsABoxGrowWithItsText) {
  for (NodeKind const kind : {NodeKind::Start, NodeKind::Activity, NodeKind::Decision, NodeKind::End}) {
    Size const small = boxOf(kind, "Go on").area.GetSize();
    Size const large = boxOf(kind, "One of those texts that tell much more than anybody wants to know").area.GetSize();
    EXPECT_GT(large.width, small.width);
    EXPECT_GT(large.height, small.height);
  }
}

TEST(Layout, GrowsWithTheFont) {
  ProcessModel const model = modelOf("a>B B>c?yes B>a?no");
  Size const once = layOut(model, plainTexts()).size;
  Size const twice = layOut(model, plainTexts(2)).size;
  EXPECT_NEAR(static_cast<double>(twice.width) / static_cast<double>(once.width), 2, 0.02);
  EXPECT_NEAR(static_cast<double>(twice.height) / static_cast<double>(once.height), 2, 0.02);
}

TEST(Layout, PutsASequenceIntoOneLine) {
  Layout const layout = layoutOf("a>B B>c");
  EXPECT_EQ(middleOf(layout.boxes[0]).y, middleOf(layout.boxes[1]).y);
  EXPECT_EQ(middleOf(layout.boxes[1]).y, middleOf(layout.boxes[2]).y);
  for (Arrow const & arrow : layout.arrows)
    EXPECT_EQ(arrow.points.size(), 2u);
}

TEST(Layout, PutsTheMiddleOneOfThreeBranchesIntoTheLine) {
  Layout const layout = layoutOf("A>b?1 A>c?2 A>d?3");
  EXPECT_LT(middleOf(layout.boxes[1]).y, middleOf(layout.boxes[0]).y);
  EXPECT_EQ(middleOf(layout.boxes[2]).y, middleOf(layout.boxes[0]).y);
  EXPECT_GT(middleOf(layout.boxes[3]).y, middleOf(layout.boxes[0]).y);
}

TEST(Layout, GivesEachArrowBackALaneOfItsOwn) {
  Layout const layout = layoutOf("a>b b>c c>d b>a c>a d>a");
  std::vector<long> heights;
  for (std::size_t flow = 3; flow < 6; ++flow) {
    EXPECT_TRUE(layout.arrows[flow].leadsBack);
    ASSERT_EQ(layout.arrows[flow].points.size(), 4u);
    heights.push_back(layout.arrows[flow].points[1].y);
  }
  // The longer, the higher.
  EXPECT_GT(heights[0], heights[1]);
  EXPECT_GT(heights[1], heights[2]);
}

TEST(Layout, LeadsAnArrowToItsOwnBoxAroundAboveIt) {
  Layout const layout = layoutOf("a>a");
  ISequence<Point> const & points = layout.arrows[0].points;
  ASSERT_EQ(points.size(), 4u);
  EXPECT_LT(points[0].x, points[3].x);
  EXPECT_EQ(points[0].y, layout.boxes[0].area.TopLeft().y);
}

TEST(Layout, PutsABranchsTextAboveTheStartOfItsArrow) {
  Layout const layout = layoutOf("A>b?yes");
  SV::Rectangle const & label = layout.labels[0].area;
  Point const & start = layout.arrows[0].points[0];
  EXPECT_EQ(layout.labels[0].text, "yes");
  EXPECT_EQ(label.TopLeft().y + label.GetSize().height, start.y - 1);
  EXPECT_LT(label.TopLeft().x - start.x, 16);
}

} // namespace
} // namespace modeler
