// Random command lines through every query of KivCmdline, beside a model of what it has to answer.

#include "acmdline.hpp"

#include "frame/cmdline_getters.hpp"
#include "frame/heap_arguments.hpp"
#include "support/data/random.hpp"
#include "support/memory/allocation.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <map>
#include <random>
#include <string>
#include <string_view>
#include <vector>

using kivtest::kFlagGetters;
using SV::String;

namespace {

using Words = std::vector<std::string>;

/// Names that queries ask for and that words are made from.
std::vector<std::string> const & names() {
  static std::vector<std::string> const all = [] {
    std::vector<std::string> list = {"", "e", "v", "wslogformat", "wslogformatlong", "no", "log", "-", "/", "\xFF"};
    for (auto const & row : kFlagGetters)
      list.emplace_back(row.word);
    for (auto const & row : kivtest::kTextGetters)
      list.emplace_back(row.option);
    for (auto const & row : kivtest::kNumberGetters)
      list.emplace_back(row.option);
    list.insert(list.end(), std::begin(kivtest::kNamesWithoutGetter), std::end(kivtest::kNamesWithoutGetter));
    return list;
  }();
  return all;
}

struct RandomLines {
  support::Random engine{20240229};

  /// 0 to \p most, both included.
  std::size_t upTo(std::size_t most) { return std::uniform_int_distribution<std::size_t>(0, most)(engine); }
  bool oneIn(std::size_t count) { return upTo(count - 1) == 0; }
  std::string const & name() { return names()[upTo(names().size() - 1)]; }

  /// Any bytes but NUL.
  std::string bytes(std::size_t length) {
    std::string text(length, '\0');
    for (char & c : text)
      c = static_cast<char>(1 + upTo(254));
    return text;
  }

  std::string prefix() { return oneIn(2) ? "-" : "/"; }

  /// A name with one character changed, added or taken away.
  std::string nearName() {
    std::string word = name();
    std::size_t const at = upTo(word.size());
    switch (upTo(3)) {
    case 0: return word.insert(at, 1, bytes(1)[0]);
    case 1: return word.substr(0, at);
    case 2: return word.substr(at);
    default:
      if (at < word.size())
        word[at] = static_cast<char>(word[at] ^ 0x20);
      return word;
    }
  }

  std::string word() {
    switch (upTo(7)) {
    case 0: return bytes(upTo(20));
    case 1: return prefix() + bytes(upTo(20));
    case 2: return prefix() + nearName();
    case 3: return nearName() + bytes(upTo(3));
    case 4: return prefix() + name() + std::to_string(static_cast<long>(engine()));
    case 5: return prefix() + name() + bytes(upTo(300));
    // Whole names are rare: flags stay set, and one that is not set yet shows more.
    default: return prefix() + (oneIn(50) ? name() : nearName());
    }
  }

  std::string program() {
    static char const * const programs[] = {"awssrv.exe", "C:\\bin\\AwsSrv.EXE", "tool.exe", "-trace", ""};
    return oneIn(4) ? bytes(upTo(40)) : programs[upTo(4)];
  }

  /// Line \p number: mostly short, now and then of 10,000 words or with a very long word.
  Words line(int number) {
    if (oneIn(200))
      return {};
    Words words(1 + (number % 10000 == 9999 ? 9999 : upTo(12)));
    words[0] = program();
    for (std::size_t i = 1; i < words.size(); ++i)
      words[i] = word();
    if (number % 1000 == 999)
      words.back() = prefix() + name() + std::string(upTo(0x100000), oneIn(2) ? '7' : 'x');
    return words;
  }
};

/// What KivCmdline has to answer, written down the plainest way.
struct Model {
  Words words;
  std::map<std::string, bool> flags;
  std::string dialogLog;
  bool longFormat = false;

  bool isOption(std::size_t i) const { return !words[i].empty() && (words[i][0] == '-' || words[i][0] == '/'); }

  /// The first option that begins with the name; 0 if there is none.
  std::size_t find(std::string_view name) const {
    for (std::size_t i = 1; i < words.size(); ++i)
      if (isOption(i) && std::string_view(words[i]).substr(1).starts_with(name))
        return i;
    return 0;
  }
  bool isFlag(std::string_view name) const { return find(name) != 0; }
  std::string value(std::string_view name) const {
    std::size_t const i = find(name);
    return i == 0 ? "" : words[i].substr(1 + name.size());
  }

  void init(Words const & line, bool withGUI, std::string const & logOption) {
    words = line;
    for (std::size_t i = 1; i < words.size(); ++i)
      if (isOption(i))
        flags[words[i].substr(1)] = true;
    for (auto const & row : kFlagGetters)
      if (!withGUI && row.withoutGUI != kivtest::WithoutGUI::asGiven)
        flags[row.word] = row.withoutGUI == kivtest::WithoutGUI::on;
    dialogLog = value("log_no_dialogs").empty() ? value(logOption) : value("log_no_dialogs");
    longFormat = value("wslogformat") == "long";
    // Only the table's words matter, and the lines are many.
    std::erase_if(flags, [](auto const & flag) {
      return std::none_of(std::begin(kFlagGetters), std::end(kFlagGetters),
                          [&](auto const & row) { return flag.first == row.word; });
    });
  }
};

bool same(String const & answer, std::string const & expected) {
  return static_cast<std::size_t>(answer.Len()) == expected.size() &&
         std::memcmp(answer.c_str(), expected.data(), expected.size()) == 0;
}

bool sameNumber(double a, double b) { return a == b || (a != a && b != b); }

void compareNames(KivCmdline const & cmdline, Model const & model, RandomLines & random) {
  for (int i = 0; i < 12; ++i) {
    std::string const & name = random.name();
    std::string const expected = model.value(name);
    ASSERT_EQ(cmdline.isFlag(name.c_str()), model.isFlag(name)) << name;
    ASSERT_TRUE(same(cmdline.getValue(name.c_str()), expected)) << name;
    ASSERT_EQ(cmdline.getInt(name.c_str()), std::atoi(expected.c_str())) << name;
    ASSERT_EQ(cmdline.getLong(name.c_str()), std::atol(expected.c_str())) << name;
    ASSERT_TRUE(sameNumber(cmdline.getDouble(name.c_str()), std::atof(expected.c_str()))) << name;
  }
}

void compareWords(KivCmdline const & cmdline, Model const & model, RandomLines & random) {
  auto const count = static_cast<int>(model.words.size());
  ASSERT_EQ(cmdline.getCount(), count);
  ASSERT_TRUE(same(cmdline.getParam(-1), ""));
  ASSERT_TRUE(same(cmdline.getParam(count), ""));
  for (int i = 0; i < std::min(count, 20); ++i) {
    auto const at = static_cast<int>(random.upTo(model.words.size() - 1));
    ASSERT_TRUE(same(cmdline.getParam(at), model.words[static_cast<std::size_t>(at)])) << at;
  }
}

void compareGetters(KivCmdline const & cmdline, Model & model) {
  for (auto const & row : kFlagGetters)
    ASSERT_EQ(row.get(), !row.switchedOff && model.flags[row.word]) << row.word;
  for (auto const & row : kivtest::kTextGetters)
    ASSERT_TRUE(same((cmdline.*row.get)(), model.value(row.option))) << row.option;
  for (auto const & row : kivtest::kNumberGetters)
    ASSERT_EQ((cmdline.*row.get)(),
              model.isFlag(row.option) ? std::atoi(model.value(row.option).c_str()) : row.whenAbsent)
        << row.option;
  ASSERT_EQ(cmdline.getWSLogFormat(), model.longFormat ? KIV_WS_LOG_FORMAT_LONG : KIV_WS_LOG_FORMAT_DEFAULT);
  ASSERT_TRUE(same(cmdline.getModalDialogSuppressionLogfileName(), model.dialogLog));
  String script("before");
  ASSERT_EQ(cmdline.getStartupKivScript(script), model.isFlag("e"));
  ASSERT_TRUE(same(script, model.isFlag("e") ? model.value("e") : "before"));
}

/// Random bytes may happen to end in a folder's name, so only the programs of the list are compared.
void compareSchemaVersion(KivCmdline const & cmdline, Model const & model) {
  String const answer = cmdline.getLoginSchemaVersion();
  std::string const program = model.words.empty() ? "" : model.words[0];
  if (program == "tool.exe" || program == "-trace" || program.empty()) {
    ASSERT_TRUE(same(answer, ""));
  } else if (program == "awssrv.exe" || program == "C:\\bin\\AwsSrv.EXE") {
    ASSERT_TRUE(same(answer, model.value("v")));
  }
}

/// Each fifth line, the largest ones among them, ends before pages without access; all of them would take half a
/// minute.
kivtest::HeapArguments argumentsOf(Words const & line, int number) {
  if (number % 5 != 4)
    return kivtest::HeapArguments(line);
  support::GuardPages const guard;
  return kivtest::HeapArguments(line);
}

void compareLines(int count) {
  RandomLines random;
  Model model;
  KivCmdline const & cmdline = KivCmdline::Instance();
  for (int i = 0; i < count; ++i) {
    SCOPED_TRACE(i);
    Words const line = random.line(i);
    bool const withGUI = i < 1000 || !random.oneIn(3); // forced flags come late: until then only words set them
    std::string const logOption = random.name();
    kivtest::HeapArguments const arguments = argumentsOf(line, i);
    KivCmdline::init(arguments.argc(), arguments.argv(), withGUI, logOption.c_str());
    model.init(line, withGUI, logOption);
    ASSERT_NO_FATAL_FAILURE(compareWords(cmdline, model, random));
    ASSERT_NO_FATAL_FAILURE(compareNames(cmdline, model, random));
    ASSERT_NO_FATAL_FAILURE(compareGetters(cmdline, model));
    ASSERT_NO_FATAL_FAILURE(compareSchemaVersion(cmdline, model));
  }
}

TEST(CmdlineRandom, OneHundredThousandLinesAnswerAsTheModel) { compareLines(100000); }

TEST(CmdlineRandom, LinesStayInsideEveryBlock) {
  support::GuardPages const guard;
  compareLines(2000);
}

} // namespace
