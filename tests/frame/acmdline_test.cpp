#include "acmdline.hpp"

#include "diagnostics/internal_errors.hpp"
#include "frame/cmdline_getters.hpp"
#include "frame/cmdline_words.hpp"

#include <gtest/gtest.h>

#include <cctype>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

using kivtest::flagsThatAreOn;
using kivtest::initWith;
using kivtest::initWithoutGUI;
using kivtest::initWords;
using kivtest::kept;
using kivtest::kFlagGetters;
using kivtest::kNumberGetters;
using kivtest::kTextGetters;
using kivtest::text;
using kivtest::Words;
using SV::String;

namespace kivtest {

/// How a row prints itself.
static void PrintTo(FlagGetter const & row, std::ostream * out) { *out << row.word; }

} // namespace kivtest

namespace {

// Before init

TEST(CmdlineBeforeInit, EveryQueryAnswersAsForNoArguments) {
  KivCmdline const & cmdline = KivCmdline::Instance();
  EXPECT_EQ(cmdline.getCount(), 0);
  EXPECT_EQ(text(cmdline.getParam(0)), "");
  EXPECT_FALSE(cmdline.isFlag("trace"));
  EXPECT_FALSE(cmdline.isFlag(""));
  EXPECT_EQ(text(cmdline.getValue("u")), "");
  EXPECT_EQ(cmdline.getInt("h"), 0);
  EXPECT_EQ(cmdline.getLong("h"), 0);
  EXPECT_EQ(cmdline.getDouble("h"), 0.0);
}

TEST(CmdlineBeforeInit, EveryFlagIsFalse) { EXPECT_EQ(flagsThatAreOn(), ""); }

TEST(CmdlineBeforeInit, EveryValueGetterAnswersForAnAbsentOption) {
  KivCmdline const & cmdline = KivCmdline::Instance();
  for (auto const & row : kTextGetters)
    EXPECT_EQ(text((cmdline.*row.get)()), "") << row.option;
  for (auto const & row : kNumberGetters)
    EXPECT_EQ((cmdline.*row.get)(), row.whenAbsent) << row.option;
  EXPECT_EQ(text(cmdline.getLoginSchemaVersion()), "");
  EXPECT_EQ(cmdline.getWSLogFormat(), 0);
  EXPECT_EQ(text(cmdline.getModalDialogSuppressionLogfileName()), "");
  String script("before");
  EXPECT_FALSE(cmdline.getStartupKivScript(script));
  EXPECT_EQ(text(script), "before");
}

TEST(CmdlineBeforeInit, FlagGettersReportNothing) {
  kivtest::InternalErrors const errors;
  for (auto const & flag : kFlagGetters)
    flag.get();
  EXPECT_EQ(errors.places(), Words{});
}

TEST(CmdlineBeforeInit, EachOtherQueryReportsTheLineOfTheOneThatItAsksFirstAndNoOther) {
  struct {
    char const * name;
    void (*ask)(KivCmdline const & cmdline);
    Words places;
  } const rows[] = {
      {"getCount", [](KivCmdline const & c) { c.getCount(); }, {"acmdline.cpp (179)"}},
      {"getParam", [](KivCmdline const & c) { c.getParam(0); }, {"acmdline.cpp (188)"}},
      {"isFlag", [](KivCmdline const & c) { c.isFlag("trace"); }, {"acmdline.cpp (201)"}},
      {"getValue", [](KivCmdline const & c) { c.getValue("u"); }, {"acmdline.cpp (228)"}},
      {"getInt", [](KivCmdline const & c) { c.getInt("h"); }, {"acmdline.cpp (228)"}},
      {"getLong", [](KivCmdline const & c) { c.getLong("h"); }, {"acmdline.cpp (228)"}},
      {"getDouble", [](KivCmdline const & c) { c.getDouble("h"); }, {"acmdline.cpp (228)"}},
      {"getLoginSchemaVersion", [](KivCmdline const & c) { c.getLoginSchemaVersion(); }, {"acmdline.cpp (188)"}},
      {"getStartupKivScript",
       [](KivCmdline const & c) {
         String s;
         c.getStartupKivScript(s);
       },
       {"acmdline.cpp (201)"}},
      {"getFontHeight", [](KivCmdline const & c) { c.getFontHeight(); }, {"acmdline.cpp (228)"}},
      {"getWSPortNumber", [](KivCmdline const & c) { c.getWSPortNumber(); }, {"acmdline.cpp (228)"}},
      {"getWSLogFileBackupCount", [](KivCmdline const & c) { c.getWSLogFileBackupCount(); }, {"acmdline.cpp (201)"}},
      {"getWSLogFormat", [](KivCmdline const & c) { c.getWSLogFormat(); }, {}},
      {"the log file", [](KivCmdline const & c) { c.getModalDialogSuppressionLogfileName(); }, {}},
  };
  kivtest::InternalErrors const errors;
  Words expected;
  for (auto const & row : rows) {
    row.ask(KivCmdline::Instance());
    expected.insert(expected.end(), row.places.begin(), row.places.end());
    EXPECT_EQ(errors.places(), expected) << row.name;
  }
  for (auto const & row : kTextGetters) {
    (KivCmdline::Instance().*row.get)();
    expected.emplace_back("acmdline.cpp (228)");
    EXPECT_EQ(errors.places(), expected) << row.option;
  }
}

TEST(CmdlineBeforeInit, InstanceIsOneObject) { EXPECT_EQ(&KivCmdline::Instance(), &KivCmdline::Instance()); }

// The flag table

class CmdlineFlagRow : public testing::TestWithParam<std::tuple<kivtest::FlagGetter, char>> {};

TEST_P(CmdlineFlagRow, SetsItsOwnFlagAndNoOther) {
  auto const & [row, prefix] = GetParam();
  initWith({prefix + std::string(row.word)});
  EXPECT_EQ(flagsThatAreOn(), row.switchedOff ? "" : std::string(row.word) + ' ');
  EXPECT_EQ(row.get(), !row.switchedOff);
}

std::string rowName(testing::TestParamInfo<CmdlineFlagRow::ParamType> const & row) {
  auto const & [flag, prefix] = row.param;
  return flag.word + std::string(prefix == '-' ? "_dash" : "_slash");
}

INSTANTIATE_TEST_SUITE_P(Table, CmdlineFlagRow,
                         testing::Combine(testing::ValuesIn(kFlagGetters), testing::Values('-', '/')), rowName);

/// What looks like a flag's word and is not.
Words nearMissesOf(std::string const & word) {
  std::string upper = word;
  std::string capital = word;
  for (char & c : upper)
    c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
  capital[0] = upper[0];
  Words misses = {'-' + upper,      '-' + capital,    '-' + word + 'x',   '-' + word + "=1",
                  '-' + word + ' ', '-' + word + '/', '-' + word + "\n",  '-' + word + "\xFF",
                  "- " + word,      "--" + word,      "-/" + word,        "-\xFF" + word,
                  "\\" + word,      "+" + word,       ' ' + ('-' + word), word};
  if (word.size() > 1) {
    misses.push_back('-' + word.substr(0, word.size() - 1));
    misses.push_back('-' + word.substr(1));
  }
  return misses;
}

TEST(CmdlineFlags, NearMissesOfTheirWordsSetNothing) {
  for (auto const & row : kFlagGetters)
    for (std::string const & word : nearMissesOf(row.word)) {
      initWith({word, "/" + word.substr(1) + "_"});
      ASSERT_EQ(flagsThatAreOn(), "") << word;
    }
}

TEST(CmdlineFlags, WithTheSameBeginningAreDistinguished) {
  initWith({"-no_gui", "-no_dialogs"});
  EXPECT_EQ(flagsThatAreOn(), "no_dialogs no_gui ");
}

TEST(CmdlineFlags, AreAllSetByOneLine) {
  Words words;
  std::string expected;
  for (auto const & row : kFlagGetters) {
    words.push_back((words.size() % 2 == 0 ? "-" : "/") + std::string(row.word));
    if (!row.switchedOff)
      expected += std::string(row.word) + ' ';
  }
  initWith(words);
  EXPECT_EQ(flagsThatAreOn(), expected);
}

TEST(CmdlineFlags, AreNotTakenFromTheProgramsName) {
  KivCmdline const & cmdline = initWords({"-trace"});
  EXPECT_EQ(flagsThatAreOn(), "");
  EXPECT_FALSE(cmdline.isFlag("trace"));
  EXPECT_EQ(text(cmdline.getValue("tr")), "");
  EXPECT_EQ(text(cmdline.getParam(0)), "-trace");
}

TEST(CmdlineFlags, StandAnywhereOnTheLine) {
  initWith({"file.txt", "-unknown", "-uAdmin", "", "-profiling"});
  EXPECT_EQ(flagsThatAreOn(), "profiling ");
}

TEST(CmdlineFlags, OfMemoryDebuggingAreAcceptedAndAnswerFalse) {
  KivCmdline const & cmdline = initWith({"-debug_mem_delayfree", "/debug_mem_heapcheck"});
  EXPECT_TRUE(cmdline.isFlag("debug_mem_delayfree"));
  EXPECT_TRUE(cmdline.isFlag("debug_mem_heapcheck"));
  EXPECT_FALSE(KivCmdline::debugMemDelayFree());
  EXPECT_FALSE(KivCmdline::debugMemHeapCheck());
}

TEST(CmdlineFlags, TraceIsSetByDash) {
  initWith({"-trace"});
  EXPECT_TRUE(KivCmdline::doTracing());
}

TEST(CmdlineFlags, TraceIsSetBySlash) {
  initWith({"/trace"});
  EXPECT_TRUE(KivCmdline::doTracing());
}

TEST(CmdlineFlags, TraceIsNotSetByACapitalOrALongerWord) {
  initWith({"-Trace", "-tracex"});
  EXPECT_FALSE(KivCmdline::doTracing());
}

// Without a GUI

TEST(CmdlineWithoutGUI, ForcesFiveFlagsOn) {
  initWithoutGUI({});
  std::string expected;
  for (auto const & row : kFlagGetters)
    if (row.withoutGUI == kivtest::WithoutGUI::on)
      expected += std::string(row.word) + ' ';
  EXPECT_EQ(flagsThatAreOn(), expected);
  EXPECT_EQ(expected, "no_dialogs no_windows no_gui no_login_screen no_printer_warning ");
}

TEST(CmdlineWithoutGUI, TheOptionXHasNoEffect) {
  KivCmdline const & cmdline = initWithoutGUI({"-x", "/x"});
  EXPECT_FALSE(KivCmdline::executeLoginDlgAnyway());
  EXPECT_TRUE(cmdline.isFlag("x"));
}

TEST(CmdlineWithoutGUI, OtherFlagsAreAsGiven) {
  initWithoutGUI({"-trace", "-nobootlogin"});
  EXPECT_TRUE(KivCmdline::doTracing());
  EXPECT_TRUE(KivCmdline::noDBBootLogin());
  EXPECT_FALSE(KivCmdline::profiling());
}

TEST(CmdlineWithoutGUI, DialogLogIsTakenFromLogNoDialogsFirst) {
  KivCmdline const & cmdline = initWithoutGUI({"-wslogown.log", "-log_no_dialogsgeneral.log"}, "wslog");
  EXPECT_EQ(text(cmdline.getModalDialogSuppressionLogfileName()), "general.log");
}

TEST(CmdlineWithoutGUI, DialogLogIsTakenFromTheNamedOptionElse) {
  KivCmdline const & cmdline = initWithoutGUI({"/wslogown.log"}, "wslog");
  EXPECT_EQ(text(cmdline.getModalDialogSuppressionLogfileName()), "own.log");
}

TEST(CmdlineWithoutGUI, DialogLogIsTakenFromTheNamedOptionWhenLogNoDialogsHasNoValue) {
  KivCmdline const & cmdline = initWithoutGUI({"-log_no_dialogs", "-wslogown.log"}, "wslog");
  EXPECT_EQ(text(cmdline.getModalDialogSuppressionLogfileName()), "own.log");
}

TEST(CmdlineWithoutGUI, DialogLogIsEmptyWhenNeitherOptionIsThere) {
  KivCmdline const & cmdline = initWithoutGUI({"-trace"}, "wslog");
  EXPECT_EQ(text(cmdline.getModalDialogSuppressionLogfileName()), "");
}

TEST(CmdlineWithoutGUI, NamedOptionThatBeginsLogNoDialogsSeesItsRest) {
  KivCmdline const & cmdline = initWithoutGUI({"-log_no_dialogs"}, "log");
  EXPECT_EQ(text(cmdline.getModalDialogSuppressionLogfileName()), "_no_dialogs");
}

TEST(CmdlineWithoutGUI, EmptyNameOfTheLogOptionTakesTheFirstOption) {
  KivCmdline const & cmdline = initWithoutGUI({"word", "-trace", "-uAdmin"}, "");
  EXPECT_EQ(text(cmdline.getModalDialogSuppressionLogfileName()), "trace");
}

TEST(CmdlineWithGUI, TheDialogLogIsReadTooForThoseWhoSuppressDialogsByHand) {
  KivCmdline const & cmdline = initWith({"-log_no_dialogsgeneral.log", "-logown.log"});
  EXPECT_EQ(text(cmdline.getModalDialogSuppressionLogfileName()), "general.log");
  EXPECT_EQ(flagsThatAreOn(), "");
}

// Words

TEST(CmdlineWords, AreCountedWithTheProgram) { EXPECT_EQ(initWith({"a", "-b", ""}).getCount(), 4); }

TEST(CmdlineWords, AreReturnedUnchanged) {
  KivCmdline const & cmdline = initWith({"-trace", "/uAdmin", "file name.txt", ""});
  EXPECT_EQ(text(cmdline.getParam(0)), "tool.exe");
  EXPECT_EQ(text(cmdline.getParam(1)), "-trace");
  EXPECT_EQ(text(cmdline.getParam(2)), "/uAdmin");
  EXPECT_EQ(text(cmdline.getParam(3)), "file name.txt");
  EXPECT_EQ(text(cmdline.getParam(4)), "");
}

TEST(CmdlineWords, AreEmptyOutsideTheLine) {
  KivCmdline const & cmdline = initWith({"last"});
  EXPECT_EQ(text(cmdline.getParam(1)), "last");
  for (int const i : {2, 3, -1, 2147483647, -2147483647 - 1})
    EXPECT_EQ(text(cmdline.getParam(i)), "") << i;
}

TEST(CmdlineWords, ThatAreEmptyOrOnlyAPrefixNameNothing) {
  KivCmdline const & cmdline = initWith({"", "-", "/"});
  EXPECT_EQ(flagsThatAreOn(), "");
  EXPECT_FALSE(cmdline.isFlag("e"));
  EXPECT_TRUE(cmdline.isFlag(""));
  EXPECT_EQ(text(cmdline.getValue("")), "");
}

TEST(CmdlineWords, AreReadWhereTheCallersArrayIs) {
  auto & arguments = kept({"tool.exe", "-uAdmin"});
  KivCmdline::init(arguments.argc(), arguments.argv(), true, "");
  arguments.argv()[1][2] = 'a';
  EXPECT_EQ(text(KivCmdline::Instance().getLoginUserName()), "admin");
}

TEST(CmdlineWords, AreReadFromTheCallersArrayAndNotFromACopyOfIt) {
  auto & arguments = kept({"tool.exe", "-uAdmin", "-h9"});
  KivCmdline::init(arguments.argc(), arguments.argv(), true, "");
  KivCmdline const & cmdline = KivCmdline::Instance();
  std::swap(arguments.argv()[0], arguments.argv()[1]);
  EXPECT_EQ(text(cmdline.getParam(0)), "-uAdmin");
  EXPECT_EQ(text(cmdline.getParam(1)), "tool.exe");
  EXPECT_EQ(text(cmdline.getLoginUserName()), "");
  char other[] = "-uGuest";
  arguments.argv()[2] = other;
  EXPECT_TRUE(cmdline.isFlag("uG"));
  EXPECT_EQ(text(cmdline.getLoginUserName()), "Guest");
  EXPECT_EQ(cmdline.getFontHeight(), 0);
}

TEST(CmdlineWords, ThatAreNullAreIgnored) {
  auto & arguments = kept({"tool.exe", "gone", "-uAdmin", "gone", "-trace"});
  for (std::size_t const i : {0, 1, 3})
    arguments.setNull(i);
  KivCmdline::init(arguments.argc(), arguments.argv(), true, "");
  KivCmdline const & cmdline = KivCmdline::Instance();
  EXPECT_EQ(cmdline.getCount(), 5);
  EXPECT_EQ(text(cmdline.getParam(1)), "");
  EXPECT_EQ(text(cmdline.getLoginUserName()), "Admin");
  EXPECT_EQ(text(cmdline.getLoginSchemaVersion()), "");
  EXPECT_EQ(flagsThatAreOn(), "trace ");
}

TEST(CmdlineWords, ANullNameCountsAsTheEmptyOne) {
  KivCmdline const & cmdline = initWith({"-first"});
  EXPECT_TRUE(cmdline.isFlag(nullptr));
  EXPECT_EQ(text(cmdline.getValue(nullptr)), "first");
  EXPECT_EQ(cmdline.getInt(nullptr), 0);
}

TEST(CmdlineWords, NoneAreThereWithACountOfZero) {
  KivCmdline const & cmdline = initWords({});
  EXPECT_EQ(cmdline.getCount(), 0);
  EXPECT_EQ(text(cmdline.getParam(0)), "");
  EXPECT_FALSE(cmdline.isFlag(""));
  EXPECT_EQ(text(cmdline.getLoginSchemaVersion()), "");
  EXPECT_EQ(flagsThatAreOn(), "");
}

TEST(CmdlineWords, NoneAreThereWithANegativeCountOrANullArray) {
  auto & arguments = kept({"tool.exe", "-trace"});
  for (auto const & [count, words] : {std::pair{-1, arguments.argv()}, {2, static_cast<char **>(nullptr)}}) {
    KivCmdline::init(count, words, true, "");
    KivCmdline const & cmdline = KivCmdline::Instance();
    EXPECT_EQ(cmdline.getCount(), count);
    EXPECT_EQ(text(cmdline.getParam(0)), "");
    EXPECT_EQ(text(cmdline.getParam(1)), "");
    EXPECT_FALSE(cmdline.isFlag(""));
    EXPECT_EQ(flagsThatAreOn(), "");
  }
}

// A second init

TEST(CmdlineSecondInit, UsesTheNewArguments) {
  initWith({"-uAdmin", "-wslogformatlong", "-h9"});
  KivCmdline const & cmdline = initWith({"-uGuest"});
  EXPECT_EQ(cmdline.getCount(), 2);
  EXPECT_EQ(text(cmdline.getLoginUserName()), "Guest");
  EXPECT_EQ(cmdline.getFontHeight(), 0);
  EXPECT_EQ(cmdline.getWSLogFormat(), KIV_WS_LOG_FORMAT_DEFAULT);
}

TEST(CmdlineSecondInit, IsReportedAndTheFirstIsNot) {
  kivtest::InternalErrors const errors;
  initWith({"-uAdmin"});
  EXPECT_EQ(errors.places(), Words{});
  initWith({"-uGuest"});
  EXPECT_EQ(errors.places(), Words{"acmdline.cpp (109)"});
}

TEST(CmdlineSecondInit, LeavesFlagsSet) {
  initWith({"-trace"});
  initWith({"-profiling"});
  EXPECT_EQ(flagsThatAreOn(), "profiling trace ");
}

TEST(CmdlineSecondInit, WithAGUIKeepsWhatWasForcedWithoutOne) {
  initWithoutGUI({"-logfirst.log"});
  KivCmdline const & cmdline = initWith({"-logsecond.log"});
  EXPECT_TRUE(KivCmdline::noGUI());
  EXPECT_EQ(text(cmdline.getModalDialogSuppressionLogfileName()), "second.log");
}

TEST(CmdlineSecondInit, WithoutAGUIClearsX) {
  initWith({"-x"});
  EXPECT_TRUE(KivCmdline::executeLoginDlgAnyway());
  initWithoutGUI({"-x"});
  EXPECT_FALSE(KivCmdline::executeLoginDlgAnyway());
}

TEST(CmdlineSecondInit, WithoutAGUISettlesTheDialogLogAgain) {
  initWithoutGUI({"-logfirst.log"});
  EXPECT_EQ(text(initWithoutGUI({}).getModalDialogSuppressionLogfileName()), "");
}

} // namespace
