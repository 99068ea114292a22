// The version reaches the properties of every file that a product ships.

#include "aappinfo.hpp"

#include "package/file_facts.hpp"
#include "support/data/files.hpp"

#include <gtest/gtest.h>

#include <string>

namespace {

std::string decimal(int number) { return std::to_string(number); }

/// The version without its hot fix, for which file properties have no room.
std::string version() {
  return decimal(Kiv_GetVersionHigh()) + '.' + decimal(Kiv_GetVersionLow()) + '.' + decimal(Kiv_GetVersionUL()) + '.' +
         decimal(Kiv_GetVersionBuild());
}

std::wstring wide(std::string const & digits) { return {digits.begin(), digits.end()}; }

class VersionOfFile : public testing::TestWithParam<std::string> {};

TEST_P(VersionOfFile, IsThatOfTheLibrary) {
  kivtest::FileFacts const file(support::binFolder() + GetParam());
  EXPECT_EQ(file.version(), version());
  EXPECT_EQ(file.productVersion(), version());
  EXPECT_EQ(file.versionText(L"FileVersion"), wide(version()));
  EXPECT_EQ(file.versionText(L"ProductVersion"), wide(version()));
  EXPECT_EQ(file.versionText(L"OriginalFilename"), wide(GetParam().substr(GetParam().rfind('\\') + 1)));
}

INSTANTIATE_TEST_SUITE_P(Shipped, VersionOfFile,
                         testing::Values("kivara.dll", "SV0105.dll", "TL0105.dll", "modeler.exe",
                                         "language\\1031\\kivara72.dll", "language\\2057\\kivara72.dll"));

} // namespace
