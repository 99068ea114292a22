// The version reaches the properties of every file that a product ships.

#include "aappinfo.hpp"

#include "support/files.hpp"
#include "tools/winapi.hpp"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

std::string decimal(int number) { return std::to_string(number); }

/// The version without its hot fix, for which file properties have no room.
std::string version() {
  return decimal(Kiv_GetVersionHigh()) + '.' + decimal(Kiv_GetVersionLow()) + '.' + decimal(Kiv_GetVersionUL()) + '.' +
         decimal(Kiv_GetVersionBuild());
}

/// The version record of a file in the bin folder; empty when it has none.
std::vector<char> recordOf(std::string const & file) {
  std::string const path = support::binFolder() + file;
  DWORD ignored = 0;
  std::vector<char> record(GetFileVersionInfoSizeA(path.c_str(), &ignored));
  if (!record.empty() && !GetFileVersionInfoA(path.c_str(), 0, static_cast<DWORD>(record.size()), record.data()))
    record.clear();
  return record;
}

std::string numberIn(std::vector<char> const & record) {
  VS_FIXEDFILEINFO const * info = nullptr;
  UINT size = 0;
  if (record.empty() ||
      !VerQueryValueA(record.data(), "\\", reinterpret_cast<void **>(const_cast<VS_FIXEDFILEINFO **>(&info)), &size))
    return "(none)";
  auto const text = [](DWORD high, DWORD low) {
    return decimal(HIWORD(high)) + '.' + decimal(LOWORD(high)) + '.' + decimal(HIWORD(low)) + '.' +
           decimal(LOWORD(low));
  };
  EXPECT_EQ(text(info->dwProductVersionMS, info->dwProductVersionLS),
            text(info->dwFileVersionMS, info->dwFileVersionLS));
  return text(info->dwFileVersionMS, info->dwFileVersionLS);
}

std::string textIn(std::vector<char> const & record, std::string const & name) {
  void * text = nullptr;
  UINT size = 0;
  std::string const path = "\\StringFileInfo\\080904E4\\" + name;
  if (record.empty() || !VerQueryValueA(record.data(), path.c_str(), &text, &size) || size == 0)
    return "(none)";
  return static_cast<char const *>(text);
}

class VersionOfFile : public testing::TestWithParam<std::string> {};

TEST_P(VersionOfFile, IsThatOfTheLibrary) {
  std::vector<char> const record = recordOf(GetParam());
  EXPECT_EQ(numberIn(record), version());
  EXPECT_EQ(textIn(record, "FileVersion"), version());
  EXPECT_EQ(textIn(record, "ProductVersion"), version());
  EXPECT_EQ(textIn(record, "OriginalFilename"), GetParam().substr(GetParam().rfind('\\') + 1));
}

INSTANTIATE_TEST_SUITE_P(Shipped, VersionOfFile,
                         testing::Values("kivara.dll", "SV0105.dll", "TL0105.dll", "modeler.exe",
                                         "language\\1031\\kivara72.dll", "language\\2057\\kivara72.dll"));

} // namespace
