// KivRegEx beside the regular expressions of the C library on the machine that builds.
#include "matchers.hpp"

#include "support/data/files.hpp"
#include "support/data/random.hpp"
#include "support/processes/child_process.hpp"
#include "tools/winapi.hpp"

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

namespace {

constexpr std::size_t kPatterns = 1250;

/// A file of the machine, as a program in Wine names it.
std::string windowsPath(std::string const & path) { return "\\\\?\\unix" + path; }

/// A path in Wine, as the machine names it.
std::string unixPath(std::string const & path) {
  using Function = char *(__cdecl *)(wchar_t const *);
  auto const function = reinterpret_cast<Function>(
      reinterpret_cast<void *>(GetProcAddress(GetModuleHandleA("kernel32"), "wine_get_unix_file_name")));
  std::wstring const wide(path.begin(), path.end());
  char * const name = function(wide.c_str());
  std::string const result = name;
  HeapFree(GetProcessHeap(), 0, name);
  return result;
}

void ask(unsigned seed, std::string const & file) {
  std::string commandLine = "\"" KIVARA_PYTHON "\" -I -S \"" KIVARA_REGEX_PEER "\" " + std::to_string(seed) + " " +
                            std::to_string(support::times(kPatterns)) + " \"" + unixPath(file) + "\"";
  STARTUPINFOA start = {};
  start.cb = sizeof start;
  PROCESS_INFORMATION process = {};
  ASSERT_TRUE(CreateProcessA(windowsPath(KIVARA_PYTHON).c_str(), commandLine.data(), nullptr, nullptr, FALSE, 0,
                             nullptr, nullptr, &start, &process));
  CloseHandle(process.hThread);
  CloseHandle(process.hProcess);
  ASSERT_TRUE(support::eventually([&] { return support::exists(file); }, 600));
}

std::string unhex(std::string const & field) {
  std::string bytes;
  for (std::size_t at = 1; at + 1 < field.size(); at += 2)
    bytes += static_cast<char>(std::stoi(field.substr(at, 2), nullptr, 16));
  return bytes;
}

std::string ours(KivRegEx const & matcher, std::string const & text) {
  int start, end;
  if (matcher.regExec(text.c_str(), start, end, 0) != KivRegEx::Success)
    return "-";
  return std::to_string(start) + "," + std::to_string(end);
}

} // namespace

class RegExPeer : public testing::TestWithParam<unsigned> {};

TEST_P(RegExPeer, AgreesOnRandomPatterns) {
  support::Random random(GetParam());
  support::TempFolder const folder;
  std::string const file = folder / "answers.txt";
  ask(random(), file);
  std::ifstream lines(file);
  std::size_t patterns = 0, compared = 0, misplaced = 0;
  for (std::string line; std::getline(lines, line); ++patterns) {
    std::istringstream fields(line);
    std::string pattern, text, expected;
    int flags, compiles;
    fields >> pattern >> flags >> compiles;
    pattern = unhex(pattern);
    KivRegEx matcher;
    ASSERT_EQ(matcher.regComp(pattern.c_str(), flags, 0) == KivRegEx::Success, compiles == 1) << pattern;
    for (; fields >> text >> expected; ++compared) {
      std::string const result = ours(matcher, unhex(text));
      ASSERT_EQ(result == "-", expected == "-")
          << pattern << ", flags " << flags << ", " << testing::PrintToString(unhex(text));
      // Without offsets the engine takes another way.
      ASSERT_EQ(matcher.match(unhex(text).c_str()), expected == "-" ? 0 : 1)
          << pattern << ", flags " << flags << ", " << testing::PrintToString(unhex(text));
      misplaced += result != expected;
    }
  }
  EXPECT_EQ(patterns, support::times(kPatterns));
  EXPECT_GT(compared, patterns);
  // The engine keeps one path for each place in the expression, and where groups that are repeated once or may be empty meet, it may
  // keep one that began later or ends earlier.
  EXPECT_LE(misplaced, 2 + compared / 5000);
  RecordProperty("misplaced", static_cast<int>(misplaced));
}

INSTANTIATE_TEST_SUITE_P(Part, RegExPeer, testing::Range(0u, 4u));
