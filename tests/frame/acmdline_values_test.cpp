#include "acmdline.hpp"

#include "frame/cmdline_getters.hpp"
#include "frame/cmdline_words.hpp"
#include "support/memory/allocation.hpp"

#include <gtest/gtest.h>

#include <cmath>
#include <string>

using kivtest::flagsThatAreOn;
using kivtest::initWith;
using kivtest::initWithoutGUI;
using kivtest::initWords;
using kivtest::kept;
using kivtest::kNumberGetters;
using kivtest::kTextGetters;
using kivtest::text;
using kivtest::Words;
using SV::String;

namespace {

TEST(CmdlineValues, OfTextOptionsAreWhatFollowsTheName) {
  for (auto const & row : kTextGetters)
    for (char const prefix : {'-', '/'}) {
      std::string const option = prefix + std::string(row.option);
      SCOPED_TRACE(option);
      auto const answer = [&row](Words const & words) { return text((initWith(words).*row.get)()); };
      EXPECT_EQ(answer({option + "C:\\a b.txt", option + "second"}), "C:\\a b.txt");
      EXPECT_EQ(answer({"word", "-Other", option + "-/x"}), "-/x");
      EXPECT_EQ(answer({option + "\xF6\xFF\x80"}), "\xF6\xFF\x80");
      EXPECT_EQ(answer({option, "next"}), "") << "the value must stand in the same word";
      EXPECT_EQ(answer({row.option + std::string("value")}), "") << "not an option";
      EXPECT_EQ(answer({prefix + std::string(" ") + row.option + "value"}), "");
      EXPECT_EQ(answer({}), "");
    }
}

TEST(CmdlineValues, OfTextOptionsAreCaseSensitive) {
  for (auto const & row : kTextGetters) {
    std::string other = row.option;
    for (char & c : other)
      c = static_cast<char>(c ^ 0x20);
    EXPECT_EQ(text((initWith({'-' + other + "value"}).*row.get)()), "") << row.option;
  }
}

TEST(CmdlineValues, OfNumberOptionsAreTheNumberAfterTheName) {
  for (auto const & row : kNumberGetters)
    for (char const prefix : {'-', '/'}) {
      std::string const option = prefix + std::string(row.option);
      SCOPED_TRACE(option);
      auto const answer = [&row](Words const & words) { return (initWith(words).*row.get)(); };
      EXPECT_EQ(answer({option + "8080"}), 8080);
      EXPECT_EQ(answer({option + "-5"}), -5);
      EXPECT_EQ(answer({option + " 12pt"}), 12);
      EXPECT_EQ(answer({option + "2147483647"}), 2147483647);
      EXPECT_EQ(answer({option + "7", option + "8"}), 7) << "only the first is seen";
      EXPECT_EQ(answer({option + "none"}), 0);
      EXPECT_EQ(answer({option, "9"}), 0);
      EXPECT_EQ(answer({}), row.whenAbsent);
    }
}

TEST(CmdlineValues, WithoutAGetterAreReadByName) {
  KivCmdline const & cmdline = initWith({"-lang1031", "/log_no_dialogsd.log", "-getfulldomainname", "/plug_log"});
  EXPECT_EQ(text(cmdline.getValue("lang")), "1031");
  EXPECT_EQ(cmdline.getInt("lang"), 1031);
  EXPECT_EQ(text(cmdline.getValue("log_no_dialogs")), "d.log");
  EXPECT_TRUE(cmdline.isFlag("getfulldomainname"));
  EXPECT_TRUE(cmdline.isFlag("plug_log"));
  EXPECT_EQ(flagsThatAreOn(), "");
}

TEST(CmdlineValues, WordsOfOthersAreAbsentWhenNotGiven) {
  KivCmdline const & cmdline = initWith({"getfulldomainname", "-plug_lo"});
  EXPECT_FALSE(cmdline.isFlag("getfulldomainname"));
  EXPECT_FALSE(cmdline.isFlag("plug_log"));
}

TEST(CmdlineValues, CapitalPAndSmallPAreDifferentOptions) {
  KivCmdline const & cmdline = initWith({"-PLaser", "-psecret"});
  EXPECT_EQ(text(cmdline.getPrinterName()), "Laser");
  EXPECT_EQ(text(cmdline.getLoginPassword()), "secret");
}

TEST(CmdlineValues, TraceFilenameStandsInTheSameWord) {
  EXPECT_EQ(text(initWith({"-trfout.txt"}).getTraceFilename()), "out.txt");
  EXPECT_EQ(text(initWith({"-trf", "out.txt"}).getTraceFilename()), "");
}

TEST(CmdlineValues, OfTwoFontHeightsOnlyTheFirstIsSeen) {
  EXPECT_EQ(initWith({"-hx", "-h9"}).getFontHeight(), 0);
  EXPECT_EQ(initWith({"-h9", "-hx"}).getFontHeight(), 9);
}

TEST(CmdlineValues, HelloCountsAsAFontHeight) {
  KivCmdline const & cmdline = initWith({"-hello"});
  EXPECT_EQ(text(cmdline.getValue("h")), "ello");
  EXPECT_EQ(cmdline.getFontHeight(), 0);
}

TEST(CmdlineValues, AreReadAsIntLongAndDouble) {
  KivCmdline const & cmdline = initWith({"-scale2.5e3x", "-big-2147483648", "-none"});
  EXPECT_EQ(cmdline.getDouble("scale"), 2500.0);
  EXPECT_EQ(cmdline.getInt("scale"), 2);
  EXPECT_EQ(cmdline.getLong("big"), -2147483647L - 1);
  EXPECT_EQ(cmdline.getDouble("none"), 0.0);
  EXPECT_EQ(cmdline.getInt("absent"), 0);
  EXPECT_EQ(cmdline.getLong("absent"), 0);
  EXPECT_EQ(cmdline.getDouble("absent"), 0.0);
  EXPECT_FALSE(std::signbit(cmdline.getDouble("absent")));
}

TEST(CmdlineValues, BackupCountIsMinusOneWhenAbsent) { EXPECT_EQ(initWith({}).getWSLogFileBackupCount(), -1); }
TEST(CmdlineValues, BackupCountIsZeroWithoutANumber) {
  EXPECT_EQ(initWith({"-wslogbackup"}).getWSLogFileBackupCount(), 0);
}
TEST(CmdlineValues, BackupCountIsTheNumberGiven) {
  EXPECT_EQ(initWith({"/wslogbackup12"}).getWSLogFileBackupCount(), 12);
}

TEST(CmdlineValues, LogFormatIsLongForTheExactWordOnly) {
  EXPECT_EQ(initWith({"-wslogformatlong"}).getWSLogFormat(), KIV_WS_LOG_FORMAT_LONG);
  EXPECT_EQ(initWith({"/wslogformatlong"}).getWSLogFormat(), 1);
  for (char const * const word : {"-wslogformat", "-wslogformatLong", "-wslogformatlonger", "-wslogformatlon",
                                  "-wslogformat long", "wslogformatlong", "-wslogformat1", "-WSlogformatlong"})
    EXPECT_EQ(initWith({word}).getWSLogFormat(), KIV_WS_LOG_FORMAT_DEFAULT) << word;
  EXPECT_EQ(initWith({}).getWSLogFormat(), 0);
  EXPECT_EQ(initWith({"-wslogformatshort", "-wslogformatlong"}).getWSLogFormat(), 0);
}

TEST(CmdlineValues, LogFormatIsReadWithoutAGUIToo) {
  EXPECT_EQ(initWithoutGUI({"-wslogformatlong"}).getWSLogFormat(), KIV_WS_LOG_FORMAT_LONG);
}

TEST(CmdlineValues, LogFormatIsReadOnceByInit) {
  auto & arguments = kept({"tool.exe", "-wslogformatlong"});
  KivCmdline::init(arguments.argc(), arguments.argv(), true, "");
  arguments.setNull(1);
  EXPECT_EQ(KivCmdline::Instance().getWSLogFormat(), KIV_WS_LOG_FORMAT_LONG);
}

TEST(CmdlineValues, SchemaVersionIsReadForAwssrvInAnyCase) {
  for (char const * const program : {"awssrv.exe", "AWSSRV.EXE", "AwsSrv.Exe", "C:\\Program Files\\k\\awssrv.exe",
                                     "..\\AWSSRV.exe", "c:/bin/Awssrv.exe"}) {
    EXPECT_EQ(text(initWords({program, "-v1.2"}).getLoginSchemaVersion()), "1.2") << program;
    EXPECT_EQ(text(initWords({program, "/v"}).getLoginSchemaVersion()), "") << program;
    EXPECT_EQ(text(initWords({program}).getLoginSchemaVersion()), "") << program;
  }
}

TEST(CmdlineValues, SchemaVersionIsIgnoredByEveryOtherProgram) {
  for (char const * const program :
       {"tool.exe", "awssrv", "awssrv.exe.exe", "xawssrv.exe", "awssrv.com", "", "-awssrv.exe", "awssrv.exe\\tool.exe"})
    EXPECT_EQ(text(initWords({program, "-v1.2"}).getLoginSchemaVersion()), "") << program;
}

TEST(CmdlineValues, StartupScriptLeavesItsArgumentAloneWhenAbsent) {
  String script("before");
  EXPECT_FALSE(initWith({"-Escript", "escript"}).getStartupKivScript(script));
  EXPECT_EQ(text(script), "before");
}

TEST(CmdlineValues, StartupScriptIsTrueWithItsValue) {
  for (char const prefix : {'-', '/'}) {
    String script("before");
    EXPECT_TRUE(initWith({prefix + std::string("estart.kiv")}).getStartupKivScript(script));
    EXPECT_EQ(text(script), "start.kiv");
  }
}

TEST(CmdlineValues, StartupScriptIsTrueWithAnEmptyTextForTheNameAlone) {
  String script("before");
  EXPECT_TRUE(initWith({"-e"}).getStartupKivScript(script));
  EXPECT_EQ(text(script), "");
}

TEST(CmdlineQueries, AllocateTheirResultAndNothingElse) {
  KivCmdline const & cmdline = initWith({"-trace", "-name a value that no short string can hold"});
  auto const allocations = [](auto const & query) {
    support::AllocationCount const count;
    query();
    return count.value();
  };
  EXPECT_EQ(allocations([&] { cmdline.getCount(); }), 0u);
  EXPECT_EQ(allocations([&] { cmdline.isFlag("trace"); }), 0u);
  EXPECT_EQ(allocations([&] { cmdline.isFlag("absent"); }), 0u);
  for (auto const & flag : kivtest::kFlagGetters)
    EXPECT_EQ(allocations([&] { flag.get(); }), 0u) << flag.word;
  EXPECT_EQ(allocations([&] { cmdline.getParam(2); }), 1u);
  EXPECT_EQ(allocations([&] { cmdline.getValue("name"); }), 1u);
  EXPECT_EQ(allocations([&] { cmdline.getInt("name"); }), 1u);
}

// Prefix matches: products and their scripts have come to depend on them.

TEST(CmdlinePrefixTrap, PasswordSeesThePrecedingProfiling) {
  EXPECT_EQ(text(initWith({"-profiling", "-pSecret"}).getLoginPassword()), "rofiling");
  EXPECT_EQ(text(initWith({"-pSecret", "-profiling"}).getLoginPassword()), "Secret");
}

TEST(CmdlinePrefixTrap, PasswordSeesThePrecedingPidfile) {
  EXPECT_EQ(text(initWith({"-pidfileC:\\k.pid", "-pSecret"}).getValue("p")), "idfileC:\\k.pid");
}

TEST(CmdlinePrefixTrap, PasswordSeesThePrecedingPort) {
  EXPECT_EQ(text(initWith({"-port8080", "-pSecret"}).getValue("p")), "ort8080");
}

TEST(CmdlinePrefixTrap, DatabaseNameSeesTheHeapCheck) {
  EXPECT_EQ(text(initWith({"-debug_mem_heapcheck", "-dBase"}).getLoginDBName()), "ebug_mem_heapcheck");
}

TEST(CmdlinePrefixTrap, FlagEIsTrueForAnyWordThatBeginsWithIt) {
  EXPECT_TRUE(initWith({"-exit"}).isFlag("e"));
  EXPECT_FALSE(initWith({"-Exit", "-next", "exit"}).isFlag("e"));
}

TEST(CmdlinePrefixTrap, NoIsAFlagWithNoexistAndNoTableFlagIsSet) {
  EXPECT_TRUE(initWith({"-noexist"}).isFlag("no"));
  EXPECT_EQ(flagsThatAreOn(), "");
}

TEST(CmdlinePrefixTrap, EmptyNameMatchesTheFirstOption) {
  KivCmdline const & cmdline = initWith({"word", "/first", "-second"});
  EXPECT_TRUE(cmdline.isFlag(""));
  EXPECT_EQ(text(cmdline.getValue("")), "first");
}

} // namespace
