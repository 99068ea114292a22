#include "base/openfile.hpp"

#include "support/data/files.hpp"

#include <gtest/gtest.h>

#include <string>

namespace {

TEST(OpenFile, IsNullWhereTheFileCannotBeOpened) {
  support::TempFolder const folder;
  EXPECT_EQ(kivara::openForThisProgram((folder / "none.txt").c_str(), "r"), nullptr);
  EXPECT_FALSE(static_cast<bool>(kivara::openFile((folder / "none.txt").c_str(), "r")));
}

TEST(OpenFile, IsWrittenAndClosedByItsOwner) {
  support::TempFolder const folder;
  std::string const path = folder / "text.txt";
  {
    kivara::OpenFile const file = kivara::openFile(path.c_str(), "wb");
    ASSERT_TRUE(static_cast<bool>(file));
    std::fputs("text", file.get());
  }
  EXPECT_EQ(support::readFile(path), "text");
  EXPECT_TRUE(DeleteFileA(path.c_str()));
}

TEST(OpenFile, IsNotInheritedByProgramsThatAreStarted) {
  support::TempFolder const folder;
  kivara::OpenFile const file = kivara::openFile((folder / "text.txt").c_str(), "w");
  ASSERT_TRUE(static_cast<bool>(file));
  DWORD flags = HANDLE_FLAG_INHERIT;
  ASSERT_TRUE(GetHandleInformation(reinterpret_cast<HANDLE>(_get_osfhandle(_fileno(file.get()))), &flags));
  EXPECT_EQ(flags & HANDLE_FLAG_INHERIT, 0u);
}

} // namespace
