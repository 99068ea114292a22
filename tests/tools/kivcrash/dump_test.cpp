#include "crash/dump.hpp"
#include "dump_builder.hpp"

#include <gtest/gtest.h>

#include <ostream>

using namespace kivtest;
using kivcrash::Dump;
using kivcrash::Problems;

namespace {

Problems const kNone;

std::optional<Dump> read(std::string const & bytes, Problems & problems) { return kivcrash::readDump(bytes, problems); }

TEST(CrashDump, HasSystemModulesThreadsAndException) {
  Problems problems;
  std::string const bytes = soundDump().bytes();
  auto const dump = read(bytes, problems);
  ASSERT_TRUE(dump);
  EXPECT_EQ(problems, kNone);
  EXPECT_EQ(dump->time, 1'763'800'215u);
  ASSERT_TRUE(dump->system);
  EXPECT_EQ(dump->system->major, 10u);
  EXPECT_EQ(dump->system->build, 19'045u);
  EXPECT_EQ(dump->system->processors, 8u);
  ASSERT_EQ(dump->modules.size(), 2u);
  EXPECT_EQ(dump->modules[0].path, "C:\\orders\\orders.exe");
  EXPECT_EQ(dump->modules[0].version, "7.2.0.5050");
  EXPECT_EQ(dump->modules[0].timeStamp, 0x12345678u);
  EXPECT_EQ(dump->modules[0].checkSum, 0x9ABCu);
  EXPECT_EQ(dump->modules[1].path, "C:\\Windows\\B\xC3\xA4r.dll");
  EXPECT_EQ(dump->modules[1].version, "");
  ASSERT_EQ(dump->threads.size(), 2u);
  EXPECT_EQ(dump->threads[1].context->Rip, 0x140001234u);
  ASSERT_TRUE(dump->exception);
  EXPECT_EQ(dump->exception->threadId, 8u);
  EXPECT_EQ(dump->exception->parameters, (std::vector<std::uint64_t>{1, 0x10}));
}

TEST(CrashDump, FindsModulesByAddressUpToTheirEnd) {
  Problems problems;
  std::string const bytes = soundDump().bytes();
  auto const dump = read(bytes, problems);
  EXPECT_EQ(dump->moduleAt(0x13FFFFFFF), nullptr);
  EXPECT_EQ(dump->moduleAt(0x140000000), dump->modules.data());
  EXPECT_EQ(dump->moduleAt(0x14000FFFF), dump->modules.data());
  EXPECT_EQ(dump->moduleAt(0x140010000), nullptr);
}

TEST(CrashDump, ReadsMemoryAcrossPiecesAndUpToTheFirstGap) {
  DumpBuilder builder = soundDump();
  builder.addMemory(0x30040, "next");
  Problems problems;
  std::string const bytes = builder.bytes();
  auto const dump = read(bytes, problems);
  char text[16] = "";
  EXPECT_EQ(dump->readMemory(0x3003E, text, 16), 6u);
  EXPECT_STREQ(text, "bbnext");
  EXPECT_EQ(dump->readMemory(0x30044, text, 1), 0u);
  EXPECT_EQ(dump->readMemory(0x1FFFF, text, 2), 0u);
}

TEST(CrashDump, ReadsSmallPiecesWithinALargeOne) {
  DumpBuilder builder = soundDump();
  builder.addMemory(0x30008, "bbbb");
  Problems problems;
  std::string const bytes = builder.bytes();
  auto const dump = read(bytes, problems);
  char text[8] = "";
  EXPECT_EQ(dump->readMemory(0x30020, text, 4), 4u);
  EXPECT_EQ(dump->memory.size(), 2u) << "the stacks alone";
}

TEST(CrashDump, ReadsPiecesThatOverlap) {
  DumpBuilder builder = soundDump();
  builder.addMemory(0x30030, std::string(32, 'c'));
  Problems problems;
  std::string const bytes = builder.bytes();
  auto const dump = read(bytes, problems);
  char text[9] = "";
  EXPECT_EQ(dump->readMemory(0x3003C, text, 8), 8u);
  EXPECT_STREQ(text, "bbbbcccc");
  EXPECT_EQ(dump->readMemory(0x3004F, text, 8), 1u);
}

TEST(CrashDump, FindsModulesInWhateverOrderTheyAre) {
  DumpBuilder builder = soundDump();
  builder.addModule(0x50000, 0x1000, L"C:\\low.dll");
  builder.addModule(0x7FF700000000, 0x1000, L"C:\\between.dll");
  Problems problems;
  std::string const bytes = builder.bytes();
  auto const dump = read(bytes, problems);
  EXPECT_EQ(problems, kNone);
  EXPECT_EQ(dump->moduleAt(0x4FFFF), nullptr);
  EXPECT_EQ(dump->moduleAt(0x50000), &dump->modules[2]);
  EXPECT_EQ(dump->moduleAt(0x140000FFF), dump->modules.data());
  EXPECT_EQ(dump->moduleAt(0x7FF700000FFF), &dump->modules[3]);
  EXPECT_EQ(dump->moduleAt(0x7FF80001FFFF), &dump->modules[1]);
  EXPECT_EQ(dump->moduleAt(0x7FF800020000), nullptr);
}

TEST(CrashDump, ReadsAllMemoryOfALargeDump) {
  DumpBuilder builder = soundDump();
  std::uint32_t const place = builder.place("firstsecond");
  builder.addStream(Memory64ListStream, bytesOf(std::uint64_t{2}) + bytesOf(std::uint64_t{place}) +
                                            bytesOf(MINIDUMP_MEMORY_DESCRIPTOR64{0x500000, 5}) +
                                            bytesOf(MINIDUMP_MEMORY_DESCRIPTOR64{0x600000, 6}));
  Problems problems;
  std::string const bytes = builder.bytes();
  auto const dump = read(bytes, problems);
  EXPECT_EQ(problems, kNone);
  char text[8] = "";
  EXPECT_EQ(dump->readMemory(0x600000, text, 8), 6u);
  EXPECT_STREQ(text, "second");
}

TEST(CrashDump, MayHaveItsListsAlignedToEightBytes) {
  DumpBuilder builder = soundDump();
  builder.hasModules = false;
  builder.addStream(ModuleListStream, bytesOf(std::uint64_t{1}) + bytesOf(builder.modules[0]));
  Problems problems;
  std::string const bytes = builder.bytes();
  auto const dump = read(bytes, problems);
  EXPECT_EQ(problems, kNone);
  EXPECT_EQ(dump->modules[0].path, "C:\\orders\\orders.exe");
}

TEST(CrashDump, HasTheServicePackOfItsSystem) {
  DumpBuilder builder = soundDump();
  builder.system.CSDVersionRva = builder.placeString(L"Service Pack 1");
  Problems problems;
  std::string const bytes = builder.bytes();
  EXPECT_EQ(read(bytes, problems)->system->servicePack, "Service Pack 1");
}

TEST(CrashDump, WithoutAnExceptionIsRead) {
  DumpBuilder builder = soundDump();
  builder.hasException = false;
  Problems problems;
  std::string const bytes = builder.bytes();
  auto const dump = read(bytes, problems);
  EXPECT_EQ(problems, kNone);
  EXPECT_FALSE(dump->exception);
}

TEST(CrashDump, OfAnotherKindIsNone) {
  Problems problems;
  EXPECT_FALSE(read(std::string(100, 'x'), problems));
  EXPECT_EQ(problems, Problems{"this is no minidump"});
  EXPECT_FALSE(kivcrash::isDump("MDM"));
  EXPECT_FALSE(kivcrash::isDump("MDMQ"));
  EXPECT_TRUE(kivcrash::isDump("MDMP"));
}

TEST(CrashDump, CutOffAnywhereSaysSo) {
  std::string const whole = soundDump().bytes();
  for (std::size_t size = 0; size + 8 < whole.size(); size += 4) {
    Problems problems;
    std::string const cut = whole.substr(0, size);
    read(cut, problems);
    ASSERT_FALSE(problems.empty()) << size;
  }
}

/// A change that makes a sound dump a damaged one.
struct Damage {
  char const * name;
  void (*change)(DumpBuilder &);
  char const * problem;
};
std::ostream & operator<<(std::ostream & out, Damage const & row) { return out << row.name; }

class DamagedDump : public testing::TestWithParam<Damage> {};
TEST_P(DamagedDump, IsNamedAndTheRestIsRead) {
  DumpBuilder builder = soundDump();
  GetParam().change(builder);
  Problems problems;
  std::string const bytes = builder.bytes();
  auto const dump = read(bytes, problems);
  ASSERT_TRUE(dump);
  ASSERT_FALSE(problems.empty());
  EXPECT_NE(problems[0].find(GetParam().problem), std::string::npos) << problems[0];
  EXPECT_EQ(dump->time, 1'763'800'215u);
}
INSTANTIATE_TEST_SUITE_P(
    , DamagedDump,
    testing::Values(
        Damage{"NoModules", [](DumpBuilder & d) { d.hasModules = false; }, "no list of modules"},
        Damage{"NoThreads", [](DumpBuilder & d) { d.hasThreads = false; }, "no list of threads"},
        Damage{"NoSystem", [](DumpBuilder & d) { d.hasSystem = false; }, "does not say on which system"},
        Damage{"OtherProcessor", [](DumpBuilder & d) { d.system.ProcessorArchitecture = 0; },
               "not of a 64-bit program"},
        Damage{"NameBeyondTheEnd", [](DumpBuilder & d) { d.modules[0].ModuleNameRva = 0x7FFFFFFF; },
               "name of module 1"},
        Damage{"NameTooLong", [](DumpBuilder & d) { d.modules[0].ModuleNameRva = d.place("\xFF\xFF\xFF\xFF"); },
               "name of module 1"},
        Damage{"NameWithEscape", [](DumpBuilder & d) { d.modules[0].ModuleNameRva = d.placeString(L"a\u001B[2J"); },
               "name of module 1"},
        Damage{"NameEmpty", [](DumpBuilder & d) { d.modules[0].ModuleNameRva = d.placeString(L""); },
               "name of module 1"},
        Damage{"ModuleAtOddAddress", [](DumpBuilder & d) { d.modules[0].BaseOfImage = 0x140000001; },
               "impossible address"},
        Damage{"ModuleBeyondAddresses", [](DumpBuilder & d) { d.modules[1].BaseOfImage = 0xFFFFFFFFFFFF0000; },
               "impossible address"},
        Damage{"ModuleWithoutSize", [](DumpBuilder & d) { d.modules[1].SizeOfImage = 0; }, "impossible address"},
        Damage{"ModulesOverlap", [](DumpBuilder & d) { d.modules[1].BaseOfImage = 0x140000000; }, "overlap"},
        Damage{"StackBeyondTheEnd", [](DumpBuilder & d) { d.threads[0].Stack.Memory.DataSize = 0x7FFFFFFF; },
               "a stack goes beyond"},
        Damage{"StackBeyondAddresses",
               [](DumpBuilder & d) { d.threads[0].Stack.StartOfMemoryRange = ~std::uint64_t{0}; },
               "impossible address"},
        Damage{"NoStack", [](DumpBuilder & d) { d.threads[0].Stack.Memory.DataSize = 0; }, "no stack of thread 7"},
        Damage{"RegistersTooShort", [](DumpBuilder & d) { d.threads[0].ThreadContext.DataSize = 8; },
               "registers are not there"},
        Damage{"RegistersOfAnotherKind",
               [](DumpBuilder & d) { d.threads[0].ThreadContext = d.placed(bytesOf(CONTEXT{})); },
               "registers are not there"},
        Damage{"ExceptionOfNoThread", [](DumpBuilder & d) { d.exception.ThreadId = 99; },
               "its exception is of thread 99"},
        Damage{"TooManyParameters", [](DumpBuilder & d) { d.exception.ExceptionRecord.NumberParameters = 16; },
               "16 parameters"},
        Damage{"ExceptionTooShort",
               [](DumpBuilder & d) {
                 d.hasException = false;
                 d.addStream(ExceptionStream, "short");
               },
               "the exception is not whole"},
        Damage{"ListTooShort",
               [](DumpBuilder & d) {
                 d.hasModules = false;
                 d.addStream(ModuleListStream, bytesOf(7));
               },
               "list of modules is not whole"},
        Damage{"ListEndless",
               [](DumpBuilder & d) {
                 d.hasModules = false;
                 d.addStream(ModuleListStream, bytesOf(-1));
               },
               "list of modules is not whole"},
        Damage{"MemoryBeyondTheEnd",
               [](DumpBuilder & d) {
                 d.addMemory(0x1000, "x");
                 d.memory[0].Memory.Rva = 0x7FFFFFFF;
               },
               "piece of memory goes beyond"},
        Damage{"MemoryBeyondAddresses", [](DumpBuilder & d) { d.addMemory(~std::uint64_t{0}, "xx"); },
               "impossible address"},
        Damage{"LargeMemoryTooShort",
               [](DumpBuilder & d) { d.addStream(Memory64ListStream, bytesOf(std::uint64_t{5})); },
               "not all of its memory"}),
    [](auto const & row) { return row.param.name; });

} // namespace
