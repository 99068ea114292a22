// The list of options beside what is written about them by hand: the page and the remarks of the header.

#include "support/data/files.hpp"
#include "support/data/lines.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

namespace {

enum class WithoutGUI { asGiven, on, off };

struct Option {
  std::string name;
  std::string getter; ///< empty if there is none
  std::string meaning;
  bool isFlag = false;
  WithoutGUI withoutGUI = WithoutGUI::asGiven;
};

std::vector<Option> const kOptions = {
#define KIV_FLAG(word, getter, withoutGUI, meaning) {word, #getter, meaning, true, WithoutGUI::withoutGUI},
#define KIV_FLAG_SWITCHED_OFF(word, getter, meaning) {word, #getter, meaning, true},
#define KIV_TEXT(name, getter, meaning) {name, #getter, meaning},
#define KIV_NUMBER(name, getter, meaning) {name, #getter, meaning},
#define KIV_OPTION(constant, name, getter, meaning) {name, #getter, meaning},
#define KIV_NAME(name, meaning) {name, "", meaning},
#define KIV_NAME_FLAG(name, meaning) {name, "", meaning, true},
#include "frame/cmdline_options.inc"
};

/// The option's line in the table of the page.
std::string lineOf(Option const & option) {
  std::string line = "| `-" + option.name + (option.isFlag ? "` | " : "VALUE` | ");
  std::string const byName = option.isFlag ? "none: `isFlag`" : "none: `getValue`";
  line += option.getter.empty() ? byName : '`' + option.getter + '`';
  line += " | " + option.meaning;
  if (option.withoutGUI != WithoutGUI::asGiven)
    line += option.withoutGUI == WithoutGUI::on ? "; always on without a GUI" : "; always off without a GUI";
  return line + " |";
}

std::vector<std::string> linesOfFile(std::string const & name) {
  return support::linesOf(support::readFile(name).value_or("(no file)"));
}

/// The rows of the page's table.
std::vector<std::string> linesOfTheTable() {
  std::vector<std::string> const lines = linesOfFile(KIVARA_SOURCE_FOLDER "/docs/command-line.md");
  auto const header = std::find(lines.begin(), lines.end(), "| option | getter | meaning |");
  if (lines.end() - header < 2)
    return {};
  return {header + 2, std::find(header, lines.end(), "")};
}

/// What the header says of a getter: its remark on the same line, or the comment above.
std::string remarkOn(std::string const & getter, std::vector<std::string> const & header) {
  for (std::size_t i = 1; i < header.size(); ++i) {
    if (header[i].find(' ' + getter + '(') == std::string::npos)
      continue;
    std::size_t const mark = header[i].find("///< ");
    if (mark != std::string::npos)
      return header[i].substr(mark + 5);
    std::size_t first = i;
    while (first > 0 && header[first - 1].starts_with("  /// "))
      --first;
    return first < i ? header[first].substr(6) : "";
  }
  return "(no such getter)";
}

TEST(CmdlineOptions, StandOnThePageAsInTheList) {
  std::vector<std::string> expected;
  std::string whole;
  for (Option const & option : kOptions) {
    expected.push_back(lineOf(option));
    whole += expected.back() + '\n';
  }
  EXPECT_EQ(linesOfTheTable(), expected) << "the table of docs/command-line.md has to be:\n" << whole;
}

TEST(CmdlineOptions, AreNamedInTheHeaderAsInTheList) {
  std::vector<std::string> const header = linesOfFile(KIVARA_SOURCE_FOLDER "/kivara/include/acmdline.hpp");
  for (Option const & option : kOptions) {
    if (!option.getter.empty()) {
      EXPECT_TRUE(remarkOn(option.getter, header).starts_with('"' + option.name + '"')) << lineOf(option);
    }
  }
}

TEST(CmdlineOptions, StandInTheListOnce) {
  for (Option const & option : kOptions)
    EXPECT_EQ(std::count_if(kOptions.begin(), kOptions.end(), [&](Option const & o) { return o.name == option.name; }),
              1)
        << option.name;
}

} // namespace
