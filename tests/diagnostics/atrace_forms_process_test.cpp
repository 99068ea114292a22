// Each report in every form: release assertions on and off, with and without application window and resource manager,
// shown and suppressed. The boxes are real ones, read and pressed from outside.

#include "diagnostics/report_texts.hpp"
#include "support/data/files.hpp"

#include <gtest/gtest.h>

#include <ostream>
#include <tuple>

using namespace kivtest;

namespace {

struct Form {
  bool assertions;
  bool window;
  int language; ///< 0: no resource manager

  std::string words() const {
    std::string text = assertions ? "-assert " : "";
    text += window ? "window " : "";
    return language != 0 ? text + "texts:" + std::to_string(language) + ' ' : text;
  }
  std::string title() const { return window ? kWindow : kNoWindow; }
  Lines const & buttons() const { return assertions ? kOKCancel : kOK; }
  char const * box() const { return assertions ? kBoxWithCancel : kPlainBox; }
  std::string hint() const { return assertions ? kCancelHint : ""; }
};

class EveryForm : public testing::TestWithParam<std::tuple<bool, bool, int>> {
protected:
  Form const form_{std::get<0>(GetParam()), std::get<1>(GetParam()), std::get<2>(GetParam())};

  /// What the program prints of an internal error after the box.
  Lines afterError() const {
    return form_.window ? Lines{"update, wait 0", "after error, wait 0"} : Lines{"after error, wait 0"};
  }
};

TEST_P(EveryForm, OfAnInternalError) {
  ReporterRun run(form_.words() + "error");
  auto const read = run.answerBox(IDOK);
  EXPECT_EQ(read.title, form_.title());
  EXPECT_EQ(read.texts, Lines{errorText(form_.language) + form_.hint()});
  EXPECT_EQ(read.buttons, form_.buttons());
  Lines expected = afterError();
  expected.insert(expected.begin(), form_.box());
  EXPECT_EQ(run.lines(), expected);
  EXPECT_EQ(run.texts(), Lines{kErrorLine});
  EXPECT_EQ(run.stops(), 0u);
}

TEST_P(EveryForm, OfADeadNetwork) {
  ReporterRun run(form_.words() + "network");
  auto const read = run.answerBox(IDOK);
  EXPECT_EQ(read.title, form_.title());
  EXPECT_EQ(read.texts, Lines{networkText(form_.language) + form_.hint()});
  EXPECT_EQ(read.buttons, form_.buttons());
  EXPECT_EQ(run.lines(), (Lines{form_.box(), "after network"}));
  EXPECT_EQ(run.texts(), Lines{});
  EXPECT_EQ(run.stops(), 0u);
}

TEST_P(EveryForm, OfAnExitNotice) {
  ReporterRun run(form_.words() + "exit");
  if (form_.assertions) {
    auto const read = run.answerBox(IDOK);
    EXPECT_EQ(read.title, form_.title());
    EXPECT_EQ(read.texts, Lines{"--- E X I T ---\n\nPress Cancel to debug."});
    EXPECT_EQ(read.buttons, kOKCancel);
  }
  EXPECT_EQ(run.lines(), form_.assertions ? (Lines{kBoxWithCancel, "after exit"}) : Lines{"after exit"});
  EXPECT_EQ(run.texts(), Lines{});
  EXPECT_EQ(run.stops(), 0u);
}

// Neither the window nor the switch change it.
TEST_P(EveryForm, OfAFailedAssertion) {
  ReporterRun run(form_.words() + "fail:count>0");
  auto const read = run.answerBox(IDOK);
  EXPECT_EQ(read.title, "Assertion failed");
  EXPECT_EQ(read.texts, Lines{kAssertionText});
  EXPECT_EQ(read.buttons, kOK);
  EXPECT_EQ(run.lines(), (Lines{kPlainBox, "assertion 0"}));
  EXPECT_EQ(run.texts(), Lines{kAssertionLine});
  EXPECT_EQ(run.stops(), 0u);
}

TEST_P(EveryForm, UnderSuppressionShowsNothingAndLogsNetworkAndExit) {
  ReporterRun run("-no_dialogs -log_reporterdialogs.txt " + form_.words() + "error fail:count>0 network exit");
  Lines expected = afterError();
  expected.insert(expected.end(), {"assertion 0", "after network", "after exit"});
  EXPECT_EQ(run.lines(), expected);
  EXPECT_EQ(run.texts(), (Lines{kErrorLine, kAssertionLine, kNoBoxLine}));
  EXPECT_EQ(run.stops(), 0u);
  EXPECT_EQ(linesOf(support::readFile("dialogs.txt").value_or("")),
            linesOf("displayDeadNetworkMessage()\n" + networkText(form_.language) + "\n--- E X I T ---"));
}

TEST_P(EveryForm, UnderSuppressionWithoutALogShowsNothing) {
  ReporterRun run("-no_dialogs " + form_.words() + "network exit");
  EXPECT_EQ(run.lines(), (Lines{"after network", "after exit"}));
  EXPECT_EQ(run.texts(), Lines{});
  EXPECT_EQ(run.stops(), 0u);
}

std::string nameOf(testing::TestParamInfo<std::tuple<bool, bool, int>> const & row) {
  auto const & [assertions, window, language] = row.param;
  std::string name = assertions ? "Assert" : "Plain";
  name += window ? "Window" : "NoWindow";
  return name + (language != 0 ? std::to_string(language) : "NoTexts");
}
INSTANTIATE_TEST_SUITE_P(Reports, EveryForm,
                         testing::Combine(testing::Bool(), testing::Bool(), testing::Values(0, 2057, 1031)), nameOf);

} // namespace
