#include "support/data/files.hpp"

#include "tools/winapi.hpp"

#include <gtest/gtest.h>
#include <stdexcept>

using support::readFile;
using support::TempFolder;
using support::writeFile;

TEST(Files, BytesComeBackAsTheyWereWritten) {
  TempFolder const folder;
  std::string bytes;
  for (int i = 0; i < 5000; ++i)
    bytes += static_cast<char>(i);
  writeFile(folder / "bytes", bytes);
  EXPECT_EQ(readFile(folder / "bytes"), bytes);
  writeFile(folder / "bytes", "");
  EXPECT_EQ(readFile(folder / "bytes"), "");
}

TEST(Files, AMissingFileIsNothing) {
  TempFolder const folder;
  EXPECT_EQ(readFile(folder / "missing"), std::nullopt);
  EXPECT_THROW(writeFile(folder / "missing\\file", "x"), std::runtime_error);
}

TEST(Files, ATempFolderGoesAwayWithAllItHolds) {
  std::string path;
  {
    TempFolder const folder;
    path = folder.path();
    EXPECT_TRUE(support::exists(path));
    CreateDirectoryA((folder / "inner").c_str(), nullptr);
    writeFile(folder / "inner\\kept", "x");
    support::setReadOnly(folder / "inner\\kept", true);
  }
  EXPECT_FALSE(support::exists(path));
}

TEST(Files, TwoTempFoldersAreNotTheSame) {
  TempFolder const first, second;
  EXPECT_NE(first.path(), second.path());
}

TEST(Files, ReadOnlyCanBeSetAndCleared) {
  TempFolder const folder;
  std::string const path = folder / "file";
  writeFile(path, "x");
  support::setReadOnly(path, true);
  EXPECT_TRUE(GetFileAttributesA(path.c_str()) & FILE_ATTRIBUTE_READONLY);
  support::setReadOnly(path, false);
  EXPECT_FALSE(GetFileAttributesA(path.c_str()) & FILE_ATTRIBUTE_READONLY);
}

TEST(Files, AFileInUseCanNeitherBeReadNorWritten) {
  TempFolder const folder;
  writeFile(folder / "file", "before");
  {
    support::FileInUse const guard(folder / "file");
    EXPECT_EQ(readFile(folder / "file"), std::nullopt);
    EXPECT_THROW(writeFile(folder / "file", "x"), std::runtime_error);
  }
  EXPECT_EQ(readFile(folder / "file"), "before");
}

TEST(Files, TheBinFolderHoldsTheRunningProgram) {
  EXPECT_EQ(support::binFolder().back(), '\\');
  EXPECT_TRUE(support::exists(support::binFolder() + "support_test.exe"));
}
