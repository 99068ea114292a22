#include "frame/product_run.hpp"

#include <gtest/gtest.h>

namespace {

TEST(StartDirectory, IsTheWorkingFolderWithABackslashAtItsEnd) {
  ProductRun run("frame_facts", "");
  EXPECT_EQ(run.fact("start folder"), run.folder().path() + '\\');
}

TEST(StartDirectory, OfARootHasOneBackslash) {
  ProductRun run(support::ProgramStart{.program = "frame_facts", .workingFolder = "C:\\"});
  EXPECT_EQ(run.fact("start folder"), "C:\\");
}

} // namespace
