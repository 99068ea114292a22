#include "frame/product_run.hpp"

#include <gtest/gtest.h>

namespace {

using Lines = std::vector<std::string>;

/// No owner; MB_RETRYCANCEL, MB_ICONHAND and MB_TASKMODAL.
constexpr char kBox[] = "box owner 0, style 2015";

Lines withStart(Lines lines) {
  lines.insert(lines.begin(), {"prepareApplication", "runApplication"});
  return lines;
}

class LowMemory : public testing::TestWithParam<char const *> {};

TEST_P(LowMemory, AsksInABox) {
  ProductRun run("frame_memory", "", {{"WITH", GetParam()}});
  auto const box = run.answerBox("Cancel");
  EXPECT_EQ(box.title, "Low memory message");
  EXPECT_EQ(box.texts, Lines{"Failed to allocate memory!\nClose other applications and press retry\n"
                             "Or press cancel to abort the application!"});
  EXPECT_EQ(box.buttons, (Lines{"Retry", "Cancel"}));
  EXPECT_EQ(run.exitCode(), 0u);
}

TEST_P(LowMemory, FailsTheAllocationWhenTheUserGivesUp) {
  ProductRun run("frame_memory", "", {{"WITH", GetParam()}});
  run.answerBox("Cancel");
  EXPECT_EQ(run.exitCode(), 0u);
  Lines expected{kBox, "failed after 1 boxes", "small works"};
  if (std::string(GetParam()) == "new")
    expected.insert(expected.begin() + 1, "bad_alloc");
  EXPECT_EQ(run.record(), withStart(expected));
}

TEST_P(LowMemory, TriesTheAllocationAgainAsOftenAsTheUserWants) {
  ProductRun run("frame_memory", "", {{"WITH", GetParam()}, {"FREE_AFTER", "3"}});
  for (int i = 0; i < 3; ++i)
    run.answerBox("Retry");
  EXPECT_EQ(run.exitCode(), 0u);
  EXPECT_EQ(run.record(), withStart({kBox, kBox, kBox, "allocated after 3 boxes", "small works"}));
}

TEST_P(LowMemory, IsSilentUnderDialogSuppression) {
  ProductRun run("frame_memory", "-no_dialogs", {{"WITH", GetParam()}});
  EXPECT_EQ(run.exitCode(), 0u);
  EXPECT_EQ(run.record()[run.record().size() - 2], "failed after 0 boxes");
}

INSTANTIATE_TEST_SUITE_P(Allocations, LowMemory, testing::Values("malloc", "new", "nothrow"));

TEST(LowMemoryHandler, IsThereBeforeTheToolkit) {
  ProductRun run("frame_memory", "", {{"WITH", "malloc"}, {"WHEN", "constructed"}});
  run.answerBox("Cancel");
  EXPECT_EQ(run.exitCode(), 0u);
  EXPECT_EQ(run.record(), (Lines{kBox, "failed after 1 boxes", "small works", "prepareApplication", "runApplication"}));
}

TEST(LowMemoryHandler, RunsOnTheThreadWhoseAllocationFailed) {
  ProductRun run("frame_memory", "", {{"WITH", "malloc"}, {"WHEN", "thread"}});
  run.answerBox("Cancel");
  EXPECT_EQ(run.exitCode(), 0u);
  EXPECT_EQ(run.record(),
            withStart({"box owner 0, style 2015 on another thread", "failed after 1 boxes", "small works"}));
}

} // namespace
