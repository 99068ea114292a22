// All that holds for every layout, for models of many shapes.
#include "layout_checks.hpp"

#include <gtest/gtest.h>

#include <random>

using SV::String;

namespace modeler {
namespace {

using Faults = std::vector<std::string>;

struct Shape {
  char const * name;
  char const * flows;
};
std::ostream & operator<<(std::ostream & out, Shape const & shape) { return out << shape.name; }

class LayoutOf : public testing::TestWithParam<Shape> {};
TEST_P(LayoutOf, KeepsBoxesArrowsAndLabelsApart) {
  ProcessModel const model = modelOf(GetParam().flows);
  for (long const scale : {1, 2, 3})
    EXPECT_EQ(faultsOf(model, layOut(model, plainTexts(scale))), Faults()) << "scale " << scale;
}
INSTANTIATE_TEST_SUITE_P(
    Models, LayoutOf,
    testing::Values(Shape{"Nothing", ""}, Shape{"OneNode", "a"}, Shape{"NodesAlone", "a b c d"}, Shape{"Two", "a>b"},
                    Shape{"TwiceTheSame", "a>b a>b a>b?no"}, Shape{"OneDecision", "a>B B>c?yes B>d?no"},
                    Shape{"NestedDecisions", "a>B B>C?yes B>D?no C>e?yes C>f?no D>g?yes D>h?no e>i f>i g>i h>i"},
                    Shape{"DecisionsInTheRows", "A>B?yes A>C?no B>d?yes B>e?no C>d?yes C>e?no"},
                    Shape{"BackByOne", "a>B B>a?no B>c?yes"},
                    Shape{"BackOverSeveral", "a>b b>c c>D D>a?no D>b?perhaps D>e?yes"},
                    Shape{"BackFromEach", "a>b b>c c>d b>a c>a d>a d>b d>c"},
                    Shape{"BackBetweenRows", "A>b?1 A>c?2 A>d?3 b>e c>e d>F F>b?again F>c F>d F>A?all"},
                    Shape{"ToItself", "a>a?again a>b b>b"},
                    Shape{"TwiceToItself", "A>A?no A>A?not_yet A>b?yes b>A?back"},
                    Shape{"SkippingSome", "a>b b>c c>d a>d a>c?quick b>d"}, Shape{"CrossedPairs", "a>c b>d a>d b>c"},
                    Shape{"ChangedPlaces", "a>d b>c a>d?x b>c?y"},
                    Shape{"AFan", "A>b?1 A>c?2 A>d?3 A>e?4 A>f?5 A>g?6 b>h c>h d>h e>h f>h g>h"},
                    Shape{"Circle", "a>b b>c c>a"}, Shape{"TwoParts", "a>b b>a c>d d>c?no"}),
    [](auto const & row) { return row.param.name; });

/// The shipped file, with the words of the installed languages.
ProcessModel sample() {
  KivInternational::InitAvailableLanguages();
  Kiv_InitializeMultiLanguageStrings();
  ProcessModel model;
  ModelReport report;
  EXPECT_TRUE(readProcessModel(Kiv_GetProgramPathFilename("models\\order.txt"), model, report)) << report.line;
  return model;
}

TEST(Layout, OfTheShippedSampleKeepsAllApart) {
  ProcessModel const model = sample();
  EXPECT_EQ(model.nodes.size(), 8u);
  EXPECT_EQ(faultsOf(model, layOut(model, plainTexts())), Faults());
}

TEST(Layout, OfALongChainKeepsAllApart) {
  ProcessModel model;
  for (int i = 0; i < 2000; ++i) {
    model.nodes.push_back({NodeKind::Activity, String(i), "Step " + String(i), i});
    if (i > 0)
      model.flows.push_back({static_cast<std::size_t>(i - 1), static_cast<std::size_t>(i), ""});
  }
  Layout const layout = layOut(model, plainTexts());
  // In one line, so that neighbours are all that can meet.
  for (std::size_t i = 1; i < layout.boxes.size(); ++i) {
    EXPECT_EQ(layout.arrows[i - 1].points[0].y, layout.arrows[0].points[0].y);
    EXPECT_GT(layout.boxes[i].area.TopLeft().x,
              layout.boxes[i - 1].area.TopLeft().x + layout.boxes[i - 1].area.GetSize().width);
    EXPECT_EQ(layout.arrows[i - 1].points.size(), 2u);
  }
}

/// Some nodes with texts of any length, and flows from anywhere to anywhere.
ProcessModel randomModel(unsigned seed) {
  std::mt19937 random(seed);
  auto const upTo = [&random](unsigned most) { return random() % (most + 1); };
  ProcessModel model;
  std::size_t const nodes = 1 + upTo(15);
  for (std::size_t i = 0; i < nodes; ++i) {
    String text;
    for (unsigned word = upTo(6); word > 0; --word)
      text += String("abcdefghijklmnopqrstuvwxyz", static_cast<std::int32_t>(1 + upTo(20))) + " ";
    model.nodes.push_back({static_cast<NodeKind>(upTo(3)), String(i), text, static_cast<long>(upTo(1) * upTo(999))});
  }
  for (unsigned flows = upTo(static_cast<unsigned>(2 * nodes)); flows > 0; --flows)
    model.flows.push_back({random() % nodes, random() % nodes,
                           String("perhaps another way", static_cast<std::int32_t>(upTo(1) * upTo(19)))});
  return model;
}

TEST(Layout, OfRandomModelsKeepsAllApart) {
  for (unsigned seed = 0; seed < 500; ++seed) {
    ProcessModel const model = randomModel(seed);
    ASSERT_EQ(faultsOf(model, layOut(model, plainTexts())), Faults())
        << "seed " << seed << ", nodes " << model.nodes.size() << ", flows " << model.flows.size();
  }
}

} // namespace
} // namespace modeler
