#include "options.hpp"

#include <gtest/gtest.h>

using kivcrash::Options;

namespace {

std::optional<Options> read(std::vector<std::wstring> const & words) {
  std::string reason;
  return kivcrash::readOptions(words, reason);
}

std::string reasonFor(std::vector<std::wstring> const & words) {
  std::string reason;
  EXPECT_FALSE(kivcrash::readOptions(words, reason));
  return reason;
}

TEST(CrashOptions, AreAFileAndSwitchesInAnyOrder) {
  auto const options = read({L"--all-threads", L"a\u65E5.crash", L"--modules", L"--json"});
  ASSERT_TRUE(options);
  EXPECT_EQ(options->file, L"a\u65E5.crash");
  EXPECT_TRUE(options->allThreads && options->modules && options->json);
  EXPECT_FALSE(options->report || options->help);
}

TEST(CrashOptions, MayNameSeveralFoldersInTheirOrder) {
  auto const options = read({L"--symbols", L"a", L"x.dmp", L"--symbols", L"-b"});
  ASSERT_TRUE(options);
  EXPECT_EQ(options->symbols, (std::vector<std::filesystem::path>{L"a", L"-b"}));
}

TEST(CrashOptions, NeedAFileUnlessHelpIsWanted) {
  EXPECT_TRUE(read({L"--help"})->help);
  EXPECT_EQ(reasonFor({}), "a file is missing");
  EXPECT_EQ(reasonFor({L"--report"}), "a file is missing");
  EXPECT_EQ(reasonFor({L"a", L"b"}), "more than one file is named");
}

TEST(CrashOptions, ThatAreUnknownOrNotWholeAreRefused) {
  EXPECT_EQ(reasonFor({L"a", L"--thread"}), "there is no option --thread");
  EXPECT_EQ(reasonFor({L"a", L"--symbols"}), "--symbols needs a folder");
  EXPECT_EQ(reasonFor({L"a", L"--symbols", L""}), "--symbols needs a folder");
  EXPECT_NE(reasonFor({L"a", L"--json", L"--report"}), "");
}

TEST(CrashOptions, AreAllInTheHelp) {
  std::string const usage = kivcrash::usage();
  for (char const * word :
       {"--all-threads", "--modules", "--report", "--symbols DIR", "--json", "--help", "Exit code 0"})
    EXPECT_NE(usage.find(word), std::string::npos) << word;
}

} // namespace
