#include "model/analysis/paths.hpp"

#include <gtest/gtest.h>

#include <string>
#include <vector>

using modeler::Flow;
using modeler::Node;
using modeler::NodeKind;
using modeler::Paths;
using modeler::ProcessModel;
using SV::String;

namespace {

/// Nodes by letters: "s" begins, "e" ends, others do neither. Flows by pairs of letters.
ProcessModel modelOf(std::string const & nodes, std::vector<std::string> const & flows) {
  ProcessModel model;
  for (char const letter : nodes) {
    NodeKind const kind = letter == 's' ? NodeKind::Start : letter == 'e' ? NodeKind::End : NodeKind::Activity;
    model.nodes.push_back({kind, String(letter), "", 0});
  }
  for (std::string const & flow : flows)
    model.flows.push_back({nodes.find(flow[0]), nodes.find(flow[1]), ""});
  return model;
}

std::vector<std::string> textsOf(ProcessModel const & model, Paths const & found) {
  std::vector<std::string> texts;
  for (modeler::Path const & path : found.paths)
    texts.emplace_back(modeler::pathText(model, path).c_str());
  return texts;
}

using Texts = std::vector<std::string>;

TEST(PathsOfAModel, LeadFromAStartToAnEndInTheOrderOfTheFlows) {
  ProcessModel const model = modelOf("sabe", {"sb", "sa", "ae", "be", "ab"});
  Paths const found = pathsOf(model, 10);
  EXPECT_EQ(textsOf(model, found), (Texts{"s > b > e", "s > a > e", "s > a > b > e"}));
  EXPECT_TRUE(found.areAll);
}

TEST(PathsOfAModel, PassNoNodeTwice) {
  ProcessModel const model = modelOf("sabe", {"sa", "ab", "ba", "aa", "be", "es"});
  EXPECT_EQ(textsOf(model, pathsOf(model, 10)), Texts{"s > a > b > e"});
}

TEST(PathsOfAModel, AreNoneWithoutAStartOrAnEnd) {
  EXPECT_TRUE(modeler::pathsOf({}, 10).paths.empty());
  EXPECT_TRUE(pathsOf(modelOf("ae", {"ae"}), 10).paths.empty());
  EXPECT_TRUE(pathsOf(modelOf("sab", {"sa", "sb"}), 10).paths.empty());
}

TEST(PathsOfAModel, GoOnAfterAnEnd) {
  ProcessModel model = modelOf("sea", {"se", "ea"});
  model.nodes[2].kind = NodeKind::End;
  EXPECT_EQ(textsOf(model, pathsOf(model, 10)), (Texts{"s > e", "s > e > a"}));
}

TEST(PathsOfAModel, BeginAtEachStart) {
  ProcessModel model = modelOf("sae", {"se", "ae"});
  model.nodes[1].kind = NodeKind::Start;
  EXPECT_EQ(textsOf(model, pathsOf(model, 10)), (Texts{"s > e", "a > e"}));
}

TEST(PathsOfAModel, AreNoMoreThanAskedFor) {
  ProcessModel const model = modelOf("sabe", {"se", "sa", "ae", "sb", "be"});
  EXPECT_TRUE(pathsOf(model, 3).areAll);
  Paths const found = pathsOf(model, 2);
  EXPECT_EQ(textsOf(model, found), (Texts{"s > e", "s > a > e"}));
  EXPECT_FALSE(found.areAll);
}

// Each node leads to each: there are more ways than anyone could try, and none to an end.
TEST(PathsOfAModel, AreNotSearchedForEver) {
  ProcessModel model = modelOf("s", {});
  for (std::size_t node = 1; node < 20; ++node)
    model.nodes.push_back({NodeKind::Activity, "a", "", 0});
  for (std::size_t from = 0; from < 20; ++from)
    for (std::size_t to = 0; to < 20; ++to)
      model.flows.push_back({from, to, ""});
  EXPECT_FALSE(pathsOf(model, 10).areAll);
}

TEST(PathsOfAModel, MayBeAsLongAsTheFile) {
  ProcessModel model = modelOf("s", {});
  constexpr std::size_t count = 40'000;
  for (std::size_t node = 1; node < count; ++node) {
    model.nodes.push_back({node + 1 < count ? NodeKind::Activity : NodeKind::End, "n", "", 0});
    model.flows.push_back({node - 1, node, ""});
  }
  Paths const found = pathsOf(model, 10);
  ASSERT_EQ(found.paths.size(), 1u);
  EXPECT_EQ(found.paths[0].size(), count);
  EXPECT_EQ(modeler::pathText(model, found.paths[0]), "s > n > n > n > n > n > n > n > n > ... > n");
}

TEST(PathText, IsShortenedFromElevenNodesOn) {
  ProcessModel const model = modelOf("abcdefghijk", {});
  EXPECT_EQ(modeler::pathText(model, {0, 1, 2, 3, 4, 5, 6, 7, 8, 9}), "a > b > c > d > e > f > g > h > i > j");
  EXPECT_EQ(modeler::pathText(model, {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10}),
            "a > b > c > d > e > f > g > h > i > ... > k");
}

TEST(PathText, ShortensLongIdentifiers) {
  ProcessModel model = modelOf("s", {});
  model.nodes[0].id = std::string(100, 'x').c_str();
  EXPECT_EQ(modeler::pathText(model, {0}), (std::string(40, 'x') + "...").c_str());
}

} // namespace
