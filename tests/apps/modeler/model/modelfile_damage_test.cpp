// Files of models that were damaged: the fault is reported with its line, or there is a model that can be saved and read again.
#include "model/processmodel.hpp"
#include "model/writing/modelwriter.hpp"

#include "support/data/damage.hpp"
#include "support/data/files.hpp"
#include "support/memory/allocation.hpp"

#include "amlstr.hpp"

#include <gtest/gtest.h>

#include <algorithm>

using modeler::Flow;
using modeler::ModelFault;
using modeler::ModelReport;
using modeler::Node;
using modeler::ProcessModel;
using SV::String;

namespace {

constexpr char kFile[] = "model.txt";

support::WeakPlaces const kMarks = {.pieces = {"\"", "\\\"", "#", "\r\n", "\n", " ", "duration 5\r\n",
                                               "flow received check\r\n", "calendar 220 8\r\n", "99:364:23:59:59",
                                               "\xC4", "start", "-1", "1e308"}};

std::string soundModel() { return support::readFile(Kiv_GetProgramPathFilename("models\\order.txt").c_str()).value(); }

void expectSound(ProcessModel const & model) {
  for (Flow const & flow : model.flows)
    ASSERT_TRUE(flow.from < model.nodes.size() && flow.to < model.nodes.size());
  for (Node const & node : model.nodes)
    ASSERT_TRUE(node.id.Len() > 0 && node.duration >= 0 && node.duration <= modeler::kLongestDuration &&
                node.seconds >= 0);
}

void expectSavedAsRead(ProcessModel const & model) {
  ASSERT_TRUE(writeProcessModel("copy.txt", model));
  ProcessModel copy;
  ModelReport report;
  ASSERT_TRUE(readProcessModel("copy.txt", copy, report))
      << "line " << report.line << " of the copy, fault " << static_cast<int>(report.fault);
  ASSERT_EQ(copy.nodes.size(), model.nodes.size());
  ASSERT_EQ(copy.flows.size(), model.flows.size());
  ASSERT_EQ(copy.name, model.name);
  for (std::size_t i = 0; i < copy.nodes.size(); ++i)
    ASSERT_TRUE(copy.nodes[i].id == model.nodes[i].id && copy.nodes[i].text == model.nodes[i].text) << i;
}

TEST(ModelFileDamage, IsReportedWithItsLineOrTheModelIsSound) {
  KivInternational::InitAvailableLanguages();
  Kiv_InitializeMultiLanguageStrings();
  std::string const sound = soundModel();
  support::Random random(121);
  std::size_t read = 0;
  for (std::size_t i = 0; i < support::times(100); ++i) {
    std::string const bytes = support::damaged(sound, random, kMarks);
    support::writeFile(kFile, bytes);
    ProcessModel model;
    ModelReport report;
    if (readProcessModel(kFile, model, report)) {
      ++read;
      ASSERT_EQ(report.fault, ModelFault::None) << i;
      ASSERT_NO_FATAL_FAILURE(expectSavedAsRead(model)) << i << ":\n" << bytes;
    } else {
      ASSERT_NE(report.fault, ModelFault::None) << i;
      ASSERT_TRUE(report.line >= 1 &&
                  report.line <=
                      std::count_if(bytes.begin(), bytes.end(), [](char c) { return c == '\n' || c == '\r'; }) + 1)
          << i;
    }
    ASSERT_NO_FATAL_FAILURE(expectSound(model)) << i;
  }
  EXPECT_GT(read, 0u);
  EXPECT_LT(read, support::times(100));
}

} // namespace
