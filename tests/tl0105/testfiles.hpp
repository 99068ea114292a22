#pragma once
/// \file
/// Files of a test, in its own working folder.

#include "tools/direntry.hpp"
#include "tools/winapi.hpp"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <string>

namespace testfiles {

inline void write(char const * name, char const * content = "content") {
  std::ofstream(name, std::ios::binary) << content;
}

/// The content of a file; "(none)" where it cannot be read.
inline std::string read(char const * name) {
  std::ifstream file(name, std::ios::binary);
  if (!file)
    return "(none)";
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

inline SV::DirEntry entry(char const * path) { return SV::DirEntry(SV::String(path)); }

inline std::string workingFolder() {
  char folder[MAX_PATH];
  GetCurrentDirectoryA(MAX_PATH, folder);
  return folder;
}

/// A test whose working folder is an empty one: the folder it starts in may hold what the system keeps there.
class InOwnFolder : public testing::Test {
protected:
  void SetUp() override {
    CreateDirectoryA(name(), nullptr);
    ASSERT_TRUE(SetCurrentDirectoryA(name()));
  }
  void TearDown() override { SetCurrentDirectoryA(".."); }

private:
  static char const * name() { return testing::UnitTest::GetInstance()->current_test_info()->name(); }
};

} // namespace testfiles
