// What the window with the times of a process says, in both languages.
#include "apps/modeler/in_process.hpp"

#include "texts/timesreport.hpp"

using modeler::NodeKind;
using modeler::ProcessModel;

namespace {

using Rows = std::vector<std::vector<std::string>>;

class ModelerTimes : public modeler::InProcess {
protected:
  static ProcessModel model() {
    ProcessModel model;
    model.name = "Order";
    model.calendar = {220, 7.5};
    model.nodes = {{NodeKind::Start, "a", "A", 0},
                   {NodeKind::Activity, "b", "B", 60 * 8},
                   {NodeKind::Activity, "c", "C", 0},
                   {NodeKind::End, "d", "D", 0}};
    model.flows = {{0, 1, {}}, {1, 3, {}}, {0, 2, {}}, {2, 3, {}}};
    return model;
  }

  static Rows report(ProcessModel const & model) {
    Rows rows;
    for (ISequence<SV::String> const & row : modeler::timesReport(model)) {
      rows.emplace_back();
      for (SV::String const & text : row)
        rows.back().emplace_back(text.c_str());
    }
    return rows;
  }
};

TEST_F(ModelerTimes, NameTheShortestPathTheLongestAndEachOther) {
  EXPECT_EQ(report(model()), (Rows{{"Process", "Order"},
                                   {"Calendar", "220 days a year, 7.5 hours a day"},
                                   {},
                                   {"Shortest path", "00:000:00:00:00", "a > c > d"},
                                   {"Longest path", "00:001:00:30:00", "a > b > d"},
                                   {"Activities without a time, which count as 0: 1"},
                                   {},
                                   {"Path 1", "00:001:00:30:00", "a > b > d"},
                                   {"Path 2", "00:000:00:00:00", "a > c > d"}}));
}

TEST_F(ModelerTimes, AreInGermanToo) {
  KivInternational::SetCurrentLanguageID(1031);
  Rows const rows = report(model());
  EXPECT_EQ(rows[1][1], "220 Tage im Jahr, 7.5 Stunden am Tag");
  EXPECT_EQ(rows[3][0], "K\xFCrzester Weg");
  EXPECT_EQ(rows[4][0], "L\xE4ngster Weg");
  EXPECT_EQ(rows[7][0], "Weg 1");
}

TEST_F(ModelerTimes, SayThatTheModelHasNone) {
  ProcessModel without = model();
  without.nodes[1].duration = 0;
  EXPECT_EQ(report(without).back(), (std::vector<std::string>{"The model says of no node how long it takes."}));
}

TEST_F(ModelerTimes, SayThatTheModelHasNoPath) {
  ProcessModel without = model();
  without.flows.clear();
  EXPECT_EQ(report(without).back(), (std::vector<std::string>{"No path leads from a start to an end."}));
}

TEST_F(ModelerTimes, SayThatThereAreMorePathsThanAreListed) {
  ProcessModel wide = model();
  for (int path = 0; path < 500; ++path) {
    wide.nodes.push_back({NodeKind::End, "e", "E", 0});
    wide.flows.push_back({0, wide.nodes.size() - 1, {}});
  }
  Rows const rows = report(wide);
  EXPECT_EQ(rows[6], (std::vector<std::string>{"The model has too many paths: others may be shorter or longer."}));
  EXPECT_EQ(rows.size(), 8u + 500u);
}

TEST_F(ModelerTimes, BeyondTheLargestNumberAreSaidToBeSo) {
  EXPECT_STREQ(modeler::pathTimeText(KivCoreTime(1e308 * 10)).c_str(), "too long to be counted");
  EXPECT_STREQ(modeler::pathTimeText(KivCoreTime(60.0)).c_str(), "00:000:00:01:00");
}

} // namespace
