#include "model/filenames.hpp"
#include "support/data/files.hpp"

#include <gtest/gtest.h>

#include <filesystem>

namespace {

TEST(ModelerFileNames, AreOfOneFileWhateverTheirCaseAndTheWayThere) {
  EXPECT_TRUE(modeler::isSameFile("models\\order.txt", "MODELS/Order.TXT"));
  EXPECT_TRUE(modeler::isSameFile("models\\..\\order.txt", ".\\order.txt"));
  EXPECT_TRUE(modeler::isSameFile("C:\\a\\\xE4.txt", "c:\\A\\\xC4.txt"));
  EXPECT_TRUE(modeler::isSameFile("order.txt", (std::filesystem::current_path() / "order.txt").string().c_str()));
}

TEST(ModelerFileNames, AreOfTwoFilesWhereFolderOrNameDiffer) {
  EXPECT_FALSE(modeler::isSameFile("models\\order.txt", "order.txt"));
  EXPECT_FALSE(modeler::isSameFile("order.txt", "order2.txt"));
  EXPECT_FALSE(modeler::isSameFile("co-op.txt", "coop.txt"));
  EXPECT_FALSE(modeler::isSameFile("C:\\order.txt", "D:\\order.txt"));
}

} // namespace
