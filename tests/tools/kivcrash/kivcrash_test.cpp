// Whole ways: a program fails at a line that it prints, and the tool names that line by the files that are left.
#include "diagnostics/crash_run.hpp"
#include "support/processes/child_process.hpp"
#include "zip_builder.hpp"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <ostream>

using namespace kivtest;

namespace {

/// A crash of crash_lines, whose boxes are answered, and runs of the tool on what it left.
class Crash {
public:
  explicit Crash(std::string const & way, Environment environment = {}, std::string const & program = "crash_lines")
      : run_({.words = way, .environment = environment, .program = program}) {}

  std::string dump() const { return run_.fileEndingIn(".dmp"); }
  std::string report() const { return run_.fileEndingIn(".log"); }
  CrashRun const & run() const { return run_; }

  /// The line that the program printed before it failed.
  int line() const {
    for (std::string const & each : run_.output())
      if (each.starts_with("line "))
        return std::atoi(each.c_str() + 5);
    ADD_FAILURE() << "the program printed no line";
    return 0;
  }

private:
  CrashRun const run_;
};

support::ProgramResult kivcrash(std::string const & arguments, std::string const & folder = {}) {
  return support::runProgram({.program = "kivcrash", .arguments = arguments, .workingFolder = folder});
}

std::string quoted(std::string const & path) { return '"' + path + '"'; }

/// Where a crash of that kind is found.
struct Way {
  char const * word;
  char const * function;
  char const * file;
  char const * module;
};
std::ostream & operator<<(std::ostream & out, Way const & row) { return out << row.word; }

/// The line of the output with that function in it, which has to be the first with a place of the program in it.
void expectFirst(support::ProgramResult const & result, Way const & way, int line) {
  std::string const place = std::string("tests/programs/crash/") + way.file + ':' + std::to_string(line);
  std::size_t const at = result.output.find("tests/programs/");
  ASSERT_NE(at, std::string::npos) << result.output << result.errors;
  std::size_t const begin = result.output.rfind('\n', at) + 1;
  std::string const first = result.output.substr(begin, result.output.find_first_of("\r\n", at) - begin);
  EXPECT_NE(first.find(way.function), std::string::npos) << result.output;
  EXPECT_TRUE(first.ends_with(place)) << place << '\n' << result.output;
  EXPECT_NE(result.output.find(std::string(way.module) + "+0x"), std::string::npos) << result.output;
}

class KivcrashWay : public testing::TestWithParam<Way> {};
TEST_P(KivcrashWay, IsFoundWithItsFunctionAndLine) {
  Crash const crash(GetParam().word);
  auto const result = kivcrash(quoted(crash.dump()));
  EXPECT_EQ(result.exitCode, 0u) << result.errors;
  EXPECT_EQ(result.errors, "");
  EXPECT_NE(result.output.find("ACCESS_VIOLATION (0xC0000005)"), std::string::npos);
  expectFirst(result, GetParam(), crash.line());
  EXPECT_NE(result.output.find("  WinMain  "), std::string::npos) << result.output;
}
INSTANTIATE_TEST_SUITE_P(, KivcrashWay,
                         testing::Values(Way{"line", "failAtLine", "crash_lines.cpp", "crash_lines.exe"},
                                         Way{"inlined", "(inlined)  failInlined", "crash_lines.cpp", "crash_lines.exe"},
                                         Way{"callback", "failInCallback", "crash_lines.cpp", "kernelbase.dll"},
                                         Way{"nowhere", "callNowhere", "crash_lines.cpp", "crash_lines.exe"},
                                         Way{"plugin", "failInPlugin", "crash_plug.cpp", "crash_plug.dll"},
                                         Way{"moved", "failInPlugin", "crash_plug.cpp", "crash_plug.dll"}),
                         [](auto const & row) { return row.param.word; });

TEST(Kivcrash, NamesTheFunctionThatAnotherWasInlinedInto) {
  Crash const crash("inlined");
  auto const result = kivcrash(quoted(crash.dump()));
  EXPECT_NE(result.output.find("failInInlinedFunction  "), std::string::npos) << result.output;
  std::string const call = "crash_lines.cpp:" + std::to_string(crash.line() + 5); // five lines below the fault
  EXPECT_NE(result.output.find(call), std::string::npos) << call << '\n' << result.output;
}

TEST(Kivcrash, FollowsAModuleThatWasForcedOffItsBase) {
  Crash const crash("moved");
  EXPECT_EQ(crash.run().output().at(0), "moved 1");
}

TEST(Kivcrash, ReadsSymbolsThatTheLinkNames) {
  std::string const program = support::binFolder() + "\\split\\crash_lines.exe";
  Crash const crash("line", {{"PATH", support::binFolder()}}, program);
  auto const result = kivcrash(quoted(crash.dump()) + " --modules");
  EXPECT_EQ(result.exitCode, 0u) << result.errors;
  expectFirst(result, {"line", "failAtLine", "crash_lines.cpp", "crash_lines.exe"}, crash.line());
  EXPECT_NE(result.output.find("split\\.debug\\crash_lines.exe.debug"), std::string::npos) << result.output;
}

/// The program with its symbols, copied to where support keeps them. It does not lie where it ran.
class Kept {
public:
  explicit Kept(Crash const & crash) : dump_(folder_ / "moved.dmp") {
    std::filesystem::create_directories(folder_ / "symbols\\.debug");
    std::string const bytes = support::readFile(crash.dump()).value();
    support::writeFile(dump_, renamed(bytes));
  }
  std::string dump() const { return dump_; }
  std::string symbols() const { return folder_ / "symbols"; }
  void keep(std::string const & name, std::string const & as) const {
    std::filesystem::copy_file(support::binFolder() + "\\split\\" + name, symbols() + '\\' + as);
  }

private:
  /// The dump as of a program in a folder that this machine does not have.
  static std::string renamed(std::string bytes) {
    std::string const from = wideBytes(L"\\split\\crash_lines.exe");
    std::string const to = wideBytes(L"\\other\\crash_lines.exe");
    for (std::size_t at = bytes.find(from); at != std::string::npos; at = bytes.find(from))
      bytes.replace(at, from.size(), to);
    return bytes;
  }

  support::TempFolder const folder_;
  std::string const dump_;
};

Crash splitCrash() {
  return Crash("line", {{"PATH", support::binFolder()}}, support::binFolder() + "\\split\\crash_lines.exe");
}

TEST(Kivcrash, LooksForModulesAndSymbolsInTheNamedFolders) {
  Crash const crash = splitCrash();
  Kept const kept(crash);
  kept.keep("crash_lines.exe", "crash_lines.exe");
  kept.keep(".debug\\crash_lines.exe.debug", ".debug\\crash_lines.exe.debug");
  auto const result = kivcrash(quoted(kept.dump()) + " --symbols " + quoted(kept.symbols()));
  EXPECT_EQ(result.exitCode, 0u) << result.errors;
  expectFirst(result, {"line", "failAtLine", "crash_lines.cpp", "crash_lines.exe"}, crash.line());
}

TEST(Kivcrash, WithSymbolsAloneNamesTheFaultAndGuessesTheRest) {
  Crash const crash = splitCrash();
  Kept const kept(crash);
  kept.keep(".debug\\crash_lines.exe.debug", "crash_lines.exe.debug");
  auto const result = kivcrash(quoted(kept.dump()) + " --symbols " + quoted(kept.symbols()));
  EXPECT_EQ(result.exitCode, 1u);
  expectFirst(result, {"line", "failAtLine", "crash_lines.cpp", "crash_lines.exe"}, crash.line());
  EXPECT_NE(result.output.find("\r\n1   ? "), std::string::npos) << result.output;
  EXPECT_NE(result.errors.find("has guesses in it"), std::string::npos) << result.errors;
  EXPECT_NE(result.errors.find("other\\crash_lines.exe: no such file on this machine"), std::string::npos)
      << result.errors;
}

TEST(Kivcrash, NamesAFileOfAnotherBuildAndReportsTheRest) {
  Crash const crash = splitCrash();
  Kept const kept(crash);
  kept.keep("crash_plug.dll", "crash_lines.exe");
  auto const result = kivcrash(quoted(kept.dump()) + " --symbols " + quoted(kept.symbols()));
  EXPECT_EQ(result.exitCode, 1u);
  EXPECT_NE(result.errors.find("symbols\\crash_lines.exe: another build: "), std::string::npos) << result.errors;
  EXPECT_NE(result.output.find("0     crash_lines.exe+0x"), std::string::npos) << result.output;
}

TEST(Kivcrash, NamesDebugSymbolsThatAreDamaged) {
  Crash const crash = splitCrash();
  Kept const kept(crash);
  kept.keep("crash_lines.exe", "crash_lines.exe");
  kept.keep(".debug\\crash_lines.exe.debug", ".debug\\crash_lines.exe.debug");
  std::string const path = kept.symbols() + "\\.debug\\crash_lines.exe.debug";
  std::string bytes = support::readFile(path).value();
  bytes[bytes.size() / 2] = static_cast<char>(bytes[bytes.size() / 2] ^ 1);
  support::writeFile(path, bytes);
  auto const result = kivcrash(quoted(kept.dump()) + " --symbols " + quoted(kept.symbols()));
  EXPECT_EQ(result.exitCode, 1u);
  EXPECT_NE(result.errors.find("damaged, or debug symbols of another build: the check sum is "), std::string::npos)
      << result.errors;
  EXPECT_NE(result.output.find("0     crash_lines.exe+0x"), std::string::npos) << result.output;
}

TEST(Kivcrash, LooksForModulesAndSymbolsBesideTheFile) {
  Crash const crash = splitCrash();
  Kept const kept(crash);
  kept.keep("crash_lines.exe", "..\\crash_lines.exe");
  kept.keep(".debug\\crash_lines.exe.debug", "..\\crash_lines.exe.debug");
  for (std::string const beginning : {"", "\\\\?\\"}) { // the second in the form of a share
    auto const result = kivcrash(quoted(beginning + kept.dump()));
    EXPECT_EQ(result.exitCode, 0u) << result.errors;
    expectFirst(result, {"line", "failAtLine", "crash_lines.cpp", "crash_lines.exe"}, crash.line());
  }
}

TEST(Kivcrash, SaysThatDebugSymbolsAreMissing) {
  Crash const crash = splitCrash();
  Kept const kept(crash);
  kept.keep("crash_lines.exe", "crash_lines.exe");
  auto const result = kivcrash(quoted(kept.dump()) + " --symbols " + quoted(kept.symbols()));
  EXPECT_EQ(result.exitCode, 1u);
  EXPECT_NE(
      result.errors.find("other\\crash_lines.exe: its debug symbols, crash_lines.exe.debug, are not on this machine"),
      std::string::npos)
      << result.errors;
}

TEST(Kivcrash, ReadsAnArchiveWithAScrambledReport) {
  Crash const crash("line", {{"KIVDUMP_NO_ENCRYPT", std::nullopt}});
  support::TempFolder const folder;
  support::writeFile(folder / "a.crash", zipOf({{"x.dmp", support::readFile(crash.dump()).value()},
                                                {"x.log", support::readFile(crash.report()).value()}}));
  auto const result = kivcrash("a.crash", folder.path());
  EXPECT_EQ(result.exitCode, 0u) << result.errors;
  expectFirst(result, {"line", "failAtLine", "crash_lines.cpp", "crash_lines.exe"}, crash.line());
  EXPECT_NE(result.output.find("library version:    7.20."), std::string::npos) << result.output;
}

TEST(Kivcrash, PrintsTheReportAloneWithoutScrambling) {
  Crash const crash("line", {{"KIVDUMP_NO_ENCRYPT", std::nullopt}});
  auto const result = kivcrash(quoted(crash.report()) + " --report");
  EXPECT_EQ(result.exitCode, 0u) << result.errors;
  EXPECT_EQ(scrambled(support::readFile(crash.report()).value()), result.output);
}

TEST(Kivcrash, NamesThePluginsOfTheReport) {
  Crash const crash("plugin");
  auto const result = kivcrash(quoted(crash.dump()));
  EXPECT_NE(result.output.find("plug-in:            01 "), std::string::npos) << result.output;
}

TEST(Kivcrash, OfAReportAloneSaysWhatItKnowsAndThatTheStackIsElsewhere) {
  Crash const crash("line");
  auto const result = kivcrash(quoted(crash.report()));
  EXPECT_EQ(result.exitCode, 1u);
  EXPECT_NE(result.output.find("what happened:      ACCESS_VIOLATION (0xC0000005)"), std::string::npos)
      << result.output;
  EXPECT_NE(result.errors.find("there is no minidump, so there is no stack"), std::string::npos) << result.errors;
}

TEST(Kivcrash, ShowsAllThreadsOnRequest) {
  Crash const crash("line");
  std::string const one = kivcrash(quoted(crash.dump())).output;
  std::string const all = kivcrash(quoted(crash.dump()) + " --all-threads --json").output;
  EXPECT_EQ(one.find("Stack of thread"), one.rfind("Stack of thread"));
  EXPECT_NE(all.find("\"failing\": true"), std::string::npos);
}

TEST(Kivcrash, AnswersInJson) {
  Crash const crash("line");
  auto const result = kivcrash(quoted(crash.dump()) + " --json");
  EXPECT_EQ(result.exitCode, 0u);
  EXPECT_TRUE(result.output.starts_with("{\"facts\": {\"program\": \""));
  EXPECT_NE(result.output.find("\"function\": \"failAtLine\""), std::string::npos);
  EXPECT_NE(result.output.find("\"line\": " + std::to_string(crash.line())), std::string::npos);
}

TEST(Kivcrash, RefusesWhatIsMissingOrForeign) {
  support::TempFolder const folder;
  support::writeFile(folder / "foreign.crash", "text");
  auto const missing = kivcrash("none.crash", folder.path());
  EXPECT_EQ(missing.exitCode, 1u);
  EXPECT_TRUE(missing.errors.starts_with("kivcrash: none.crash: cannot be read: ")) << missing.errors;
  auto const foreign = kivcrash("foreign.crash", folder.path());
  EXPECT_EQ(foreign.exitCode, 1u);
  EXPECT_NE(foreign.errors.find("this is no crash archive, minidump or crash report"), std::string::npos);
  EXPECT_EQ(foreign.output, "");
}

TEST(Kivcrash, SaysThatADumpHasNoException) {
  support::TempFolder const folder;
  DumpBuilder dump = soundDump();
  dump.hasException = false;
  support::writeFile(folder / "a.dmp", dump.bytes());
  auto const result = kivcrash("a.dmp", folder.path());
  EXPECT_EQ(result.exitCode, 1u);
  EXPECT_NE(result.errors.find("the minidump has no exception"), std::string::npos) << result.errors;
  EXPECT_NE(result.output.find("Stack of thread 7:"), std::string::npos) << result.output;
}

TEST(Kivcrash, FailsWhereItsAnswerCannotBeWritten) {
  support::TempFolder const folder;
  std::string const report =
      "\r\n# [dump v4] Crash dump\r\n\r\n  System crash time: 22.11.2025, 08:30.16\r\n\r\n[DONE]\r\n";
  support::writeFile(folder / "a.log", report);
  support::ProgramStart start{.program = "kivcrash", .arguments = "a.log --report", .workingFolder = folder.path()};
  EXPECT_EQ(support::runProgram(start).exitCode, 0u);
  start.withoutStreams = true;
  EXPECT_EQ(support::runProgram(start).exitCode, 1u);
}

TEST(Kivcrash, HelpsAndRefusesWrongUsage) {
  auto const help = kivcrash("--help");
  EXPECT_EQ(help.exitCode, 0u);
  EXPECT_TRUE(help.output.starts_with("usage: kivcrash FILE"));
  auto const wrong = kivcrash("a b");
  EXPECT_EQ(wrong.exitCode, 2u);
  EXPECT_TRUE(wrong.errors.starts_with("kivcrash: more than one file is named"));
}

} // namespace
