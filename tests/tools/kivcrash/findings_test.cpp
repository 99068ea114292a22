#include "common/wholefile.hpp"
#include "dump_builder.hpp"
#include "findings/facts.hpp"
#include "findings/findings.hpp"
#include "support/data/files.hpp"

#include <gtest/gtest.h>

#include <memory>

using namespace kivcrash;
using kivtest::DumpBuilder;
using kivtest::soundDump;

namespace {

std::unique_ptr<CrashFile> fileOf(DumpBuilder builder) {
  Problems problems;
  auto file = readCrashFile(builder.bytes(), problems);
  EXPECT_EQ(problems, Problems{});
  return file;
}

Findings findIn(DumpBuilder const & builder, Wanted wanted = {}) {
  ModuleFiles files({});
  return find(*fileOf(builder), files, wanted, {});
}

std::string accessOf(std::vector<std::uint64_t> const & parameters, std::uint32_t code = STATUS_ACCESS_VIOLATION) {
  DumpBuilder dump = soundDump();
  dump.setException(8, code, DumpBuilder::registers(0x140001234, 0x30010), parameters);
  return faultOf(*fileOf(dump))->access;
}

TEST(CrashFindings, HaveTheStackOfTheFailingThreadAloneOrFirst) {
  Findings const one = findIn(soundDump());
  ASSERT_EQ(one.stacks.size(), 1u);
  EXPECT_EQ(one.stacks[0].thread, 8u);
  EXPECT_TRUE(one.stacks[0].isFailing);
  Findings const all = findIn(soundDump(), {.allThreads = true});
  ASSERT_EQ(all.stacks.size(), 2u);
  EXPECT_EQ(all.stacks[0].thread, 8u);
  EXPECT_EQ(all.stacks[1].thread, 7u);
  EXPECT_FALSE(all.stacks[1].isFailing);
}

/// The thread itself is in the handler of the exception by then.
TEST(CrashFindings, BeginTheStackWithTheRegistersOfTheFault) {
  DumpBuilder dump = soundDump();
  dump.setException(8, STATUS_ACCESS_VIOLATION, DumpBuilder::registers(0x140005678, 0x30010));
  Findings const findings = findIn(dump);
  ASSERT_FALSE(findings.stacks.at(0).lines.empty());
  EXPECT_EQ(findings.stacks[0].lines[0].address, 0x140005678u);
  EXPECT_EQ(findings.stacks[0].lines[0].module, "orders.exe");
  EXPECT_EQ(findings.stacks[0].lines[0].offset, 0x5678u);
}

/// After the last byte of the function, where a call of one that never returns leads to.
std::uint64_t endOf(std::string const & function, Image const & image) {
  DebugSymbols symbols(image);
  std::uint64_t end = 0;
  for (std::uint64_t offset = 0x1000; offset < 0x3000; ++offset) {
    auto const locations = symbols.at(offset);
    if (!locations.empty() && locations.back().function == function)
      end = offset + 1;
  }
  return end;
}

TEST(CrashFindings, NameTheFunctionOfACallThatIsTheLastOfIt) {
  std::filesystem::path const folder(support::binFolder());
  std::string reason;
  auto const image =
      Image::read(std::make_shared<std::string const>(readWhole(folder / L"crash_plug.dll")), reason).value();
  std::uint64_t const base = 0x10000000;
  std::uint64_t const end = endOf("failInPlugin", image);
  ASSERT_NE(end, 0u);
  DumpBuilder dump;
  auto & module = dump.addModule(base, image.size(), L"C:\\crash_plug.dll");
  module.TimeDateStamp = image.timeStamp();
  module.CheckSum = image.checkSum();
  CONTEXT const registers = DumpBuilder::registers(0, 0x20000); // a call to nowhere
  dump.addThread(7, 0x20000, kivtest::bytesOf(base + end) + std::string(56, '\0'), registers);
  dump.setException(7, STATUS_ACCESS_VIOLATION, registers);
  ModuleFiles files({folder});
  Findings const findings = find(*fileOf(dump), files, {}, {});
  ASSERT_GE(findings.stacks.at(0).lines.size(), 2u);
  StackLine const & caller = findings.stacks[0].lines[1];
  EXPECT_EQ(caller.offset, end);
  ASSERT_FALSE(caller.locations.empty());
  EXPECT_EQ(caller.locations.back().function, "failInPlugin");
}

TEST(CrashFindings, NameModulesWithoutAFile) {
  Findings const findings = findIn(soundDump());
  ASSERT_FALSE(findings.problems.empty());
  EXPECT_EQ(findings.problems[0], "C:\\orders\\orders.exe: no such file on this machine; --symbols names folders where "
                                  "it lies");
  EXPECT_EQ(findings.problems.back(), "the stack of thread 8 is not whole: no file of this machine fits orders.exe");
}

TEST(CrashFacts, SayHowTheMemoryWasUsed) {
  EXPECT_EQ(accessOf({0, 0x10}), "reading 0x10");
  EXPECT_EQ(accessOf({1, 0x10}), "writing 0x10");
  EXPECT_EQ(accessOf({8, 0}), "executing 0x0");
  EXPECT_EQ(accessOf({0, 0x10, 7}, STATUS_IN_PAGE_ERROR), "reading 0x10");
  EXPECT_EQ(accessOf({0}), "");
  EXPECT_EQ(accessOf({0, 0x10}, STATUS_INTEGER_OVERFLOW), "");
}

TEST(CrashFacts, NameTheExceptionsOfTheCompiler) {
  DumpBuilder dump = soundDump();
  dump.exception.ExceptionRecord.ExceptionCode = 0x20474343;
  EXPECT_EQ(faultOf(*fileOf(dump))->name, "C++ exception that nobody caught");
}

TEST(CrashFacts, OfAReportAloneAreThoseOfItsLines) {
  Problems problems;
  auto const file = readCrashFile("\r\n# [dump v4] Crash dump\r\n    Version: 7.20\r\n    Command line: 'a.exe -b'\r\n"
                                  "  Windows version: Windows XP\r\n  System crash time: 22.11.2025, 08:30.16\r\n"
                                  "  Module name......: 'C:\\a.exe'\r\n  Exception code: C0000094h X\r\n[DONE]\r\n",
                                  problems);
  ASSERT_TRUE(file);
  EXPECT_EQ(factsOf(*file), (std::vector<std::pair<std::string, std::string>>{{"program", "C:\\a.exe"},
                                                                              {"library version", "7.20"},
                                                                              {"command line", "a.exe -b"},
                                                                              {"time", "2025-11-22 08:30:16 UTC"},
                                                                              {"system", "Windows XP"}}));
  EXPECT_EQ(faultOf(*file)->name, "INT_DIVIDE_BY_ZERO");
}

} // namespace
