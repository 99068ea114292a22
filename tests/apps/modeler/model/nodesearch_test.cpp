// Nodes of a process model, by what their texts say.
#include "model/analysis/nodesearch.hpp"

#include <gtest/gtest.h>

#include <ostream>

using modeler::kNoNode;
using modeler::NodeKind;
using modeler::NodeMatcher;
using modeler::ProcessModel;
using modeler::Search;
using modeler::SearchKind;

namespace {

ProcessModel order() {
  ProcessModel model;
  model.nodes = {{NodeKind::Start, "received", "Order received", 0},
                 {NodeKind::Activity, "check", "Check the order (all of it)", 20},
                 {NodeKind::Decision, "complete", "Complete? 100 %", 0},
                 {NodeKind::Activity, "pay",
                  "\xDC"
                  "berweisung pr\xFC"
                  "fen",
                  0},
                 {NodeKind::End, "done", "Done", 0}};
  return model;
}

struct Case {
  char const * what;
  SearchKind kind;
  bool isCaseSensitive;
  std::size_t first; ///< the place of the first hit
};
std::ostream & operator<<(std::ostream & out, Case const & row) { return out << row.what; }

class ModelerSearch : public testing::TestWithParam<Case> {};
TEST_P(ModelerSearch, FindsTheFirstNodeWhoseTextHasIt) {
  NodeMatcher const matcher({GetParam().what, GetParam().kind, GetParam().isCaseSensitive}, false);
  EXPECT_TRUE(matcher.IsUsable());
  EXPECT_EQ(nextMatch(order(), matcher, kNoNode), GetParam().first);
}
INSTANTIATE_TEST_SUITE_P(
    Plain, ModelerSearch,
    testing::Values(Case{"order", SearchKind::Plain, false, 0}, Case{"order", SearchKind::Plain, true, 1},
                    Case{"(all of", SearchKind::Plain, true, 1}, Case{"?", SearchKind::Plain, true, 2},
                    Case{".", SearchKind::Plain, true, kNoNode}, Case{"*", SearchKind::Plain, false, kNoNode},
                    Case{"\xFC"
                         "berweisung PR\xDC",
                         SearchKind::Plain, false, 3},
                    Case{"\xFC"
                         "berweisung",
                         SearchKind::Plain, true, kNoNode},
                    Case{"received", SearchKind::Plain, false, 0},
                    Case{"check  the", SearchKind::Plain, false, kNoNode}));
INSTANTIATE_TEST_SUITE_P(Wildcards, ModelerSearch,
                         testing::Values(Case{"ch?ck", SearchKind::Wildcards, false, 1},
                                         Case{"ch?ck", SearchKind::Wildcards, true, kNoNode},
                                         Case{"o*e*l", SearchKind::Wildcards, false, 1},
                                         Case{"e(*)", SearchKind::Wildcards, false, kNoNode},
                                         Case{"r (*)", SearchKind::Wildcards, false, 1}));
INSTANTIATE_TEST_SUITE_P(Expression, ModelerSearch,
                         testing::Values(Case{"^d", SearchKind::Expression, false, 4},
                                         Case{"^d", SearchKind::Expression, true, kNoNode},
                                         Case{"[0-9]+ %$", SearchKind::Expression, true, 2},
                                         Case{"(done|complete)", SearchKind::Expression, false, 2}));

TEST(ModelerSearching, TakesEveryByteOfAPlainTextForItself) {
  ProcessModel model;
  model.nodes = {{NodeKind::Activity, "a", "", 0}};
  for (int byte = ' '; byte < 256; ++byte) {
    SV::String const text(static_cast<char>(byte));
    model.nodes[0].text = "a" + text + "b";
    NodeMatcher const matcher({"a" + text + "b", SearchKind::Plain, true}, false);
    EXPECT_TRUE(matcher.IsUsable()) << byte;
    EXPECT_EQ(nextMatch(model, matcher, kNoNode), 0u) << byte;
    model.nodes[0].text = "ab";
    EXPECT_EQ(nextMatch(model, matcher, kNoNode), kNoNode) << byte;
  }
}

TEST(ModelerSearching, GoesOnAfterTheLastHitAndRound) {
  ProcessModel const model = order();
  NodeMatcher const matcher({"order", SearchKind::Plain, false}, false);
  EXPECT_EQ(nextMatch(model, matcher, 0), 1u);
  EXPECT_EQ(nextMatch(model, matcher, 1), 0u);
  EXPECT_EQ(nextMatch(model, matcher, 4), 0u);
  EXPECT_EQ(nextMatch(model, matcher, 99), 0u);
}

TEST(ModelerSearching, StaysAtTheOnlyHit) {
  NodeMatcher const matcher({"done", SearchKind::Plain, false}, false);
  EXPECT_EQ(nextMatch(order(), matcher, 4), 4u);
}

TEST(ModelerSearching, FindsNothingInAModelWithoutNodes) {
  EXPECT_EQ(nextMatch({}, NodeMatcher({"a", SearchKind::Plain, false}, false), kNoNode), kNoNode);
}

TEST(ModelerSearching, CannotUseAnExpressionWithAFault) {
  NodeMatcher const matcher({"(order", SearchKind::Expression, false}, false);
  EXPECT_FALSE(matcher.IsUsable());
  EXPECT_EQ(nextMatch(order(), matcher, kNoNode), kNoNode);
}

} // namespace
