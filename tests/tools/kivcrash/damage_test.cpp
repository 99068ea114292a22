// Dumps, reports, archives and debug symbols that are damaged in every way: what can be said is said, and nothing else happens.
#include "crash/crashfile.hpp"
#include "diagnostics/crash_run.hpp"
#include "findings/findings.hpp"
#include "findings/stackwalk.hpp"
#include "output/jsonoutput.hpp"
#include "output/textoutput.hpp"
#include "support/data/damage.hpp"
#include "support/data/files.hpp"
#include "support/memory/allocation.hpp"
#include "symbols/debugsymbols.hpp"
#include "zip_builder.hpp"

#include <gtest/gtest.h>

#include <random>
#include <string>

using namespace kivtest;
using kivcrash::Problems;

namespace {

constexpr std::size_t kFiles = 1'000; // of a kind; a hundred times as many in the long run

constexpr char kReport[] =
    "\r\n# [dump v4] Crash dump\r\n\r\n  KIVARA\r\n    Version: 7.20\r\n\r\n  1 loaded plugins:\r\n"
    "    01 a.dll [A]\r\n\r\n  System crash time: 22.11.2025, 08:30.16\r\n\r\n"
    "  Exception code: C0000005h ACCESS_VIOLATION\r\n\r\n[DONE]\r\n\r\n";

/// All that the tool does with a file but printing; nothing of it is on this machine.
kivcrash::Findings findIn(std::string const & bytes) {
  Problems problems;
  auto const file = kivcrash::readCrashFile(bytes, problems);
  kivcrash::ModuleFiles files({});
  kivcrash::Findings findings;
  findings.problems = problems;
  if (file)
    findings = kivcrash::find(*file, files, {true, true}, problems);
  EXPECT_FALSE(kivcrash::asText(findings, true).empty() && findings.problems.empty());
  EXPECT_FALSE(kivcrash::asJson(findings).empty());
  return findings;
}

/// The exit code is not zero if a problem is reported.
void expectProblems(unsigned seed, std::string const & sound) {
  support::GuardPages const guard;
  support::Random random(seed);
  for (std::size_t i = 0; i < support::times(kFiles); ++i) {
    ASSERT_FALSE(findIn(support::damaged(sound, random)).problems.empty()) << i;
  }
}

TEST(KivcrashDamage, OfADumpIsNamed) { expectProblems(31, soundDump().bytes()); }

TEST(KivcrashDamage, OfAReportIsNamed) { expectProblems(32, kReport); }

TEST(KivcrashDamage, OfAnArchiveIsNamed) {
  expectProblems(33, zipOf({{"orders.exe.1.dmp", soundDump().bytes()}, {"orders.exe.log", kReport}}));
}

/// Of a real crash: the walk through each stack goes on by the files of this machine wherever the damage leads.
TEST(KivcrashDamage, OfAStackLeadsToItsEnd) {
  CrashRun const crash({.words = "line", .program = "crash_lines"});
  std::string const sound = support::readFile(crash.fileEndingIn(".dmp")).value();
  kivcrash::ModuleFiles files({support::binFolder()});
  support::Random random(35);
  std::size_t frames = 0;
  for (std::size_t i = 0; i < support::times(kFiles / 10); ++i) {
    Problems problems;
    std::string bytes = sound;
    for (std::size_t k = 0; k < sound.size() / 1'000; ++k) // anywhere; the lists of the dump stay what they are, mostly
      bytes[1'000 + random() % (bytes.size() - 1'000)] = static_cast<char>(random());
    auto const dump = kivcrash::readDump(bytes, problems);
    ASSERT_TRUE(dump);
    kivcrash::AddressSpace const space(*dump, files);
    for (kivcrash::Thread const & thread : dump->threads)
      if (thread.context)
        frames += kivcrash::walkStack(space, *thread.context).frames.size();
  }
  EXPECT_GT(frames, support::times(kFiles / 10));
}

/// Debug symbols, and the offset of a function in the unit that a change leads in a circle.
struct Circle {
  std::string bytes;
  std::uint64_t offset = 0;
};

/// The place in the file where the entry says which one is next to it; 0: it does not.
std::uint64_t placeOfSibling(Dwarf_Debug debug, Dwarf_Die die, kivcrash::Image const & image) {
  kivcrash::Attribute const attribute = kivcrash::attributeOf(debug, die, DW_AT_sibling);
  kivcrash::DwarfError error(debug);
  Dwarf_Off offset = 0;
  if (!attribute || dwarf_attr_offset(die, attribute.get(), &offset, &error) != DW_DLV_OK)
    return 0;
  auto const info = std::ranges::find(image.sections(), ".debug_info", &kivcrash::Image::Section::name);
  return static_cast<std::uint64_t>(info->bytes.data() - image.bytes()->data()) + offset;
}

/// The first entry with a next one in a unit with code gets itself as the next one.
Circle circleIn(std::string const & sound) {
  std::string reason;
  auto const image = kivcrash::Image::read(std::make_shared<std::string const>(sound), reason);
  kivcrash::DwarfObject const object(image.value());
  Dwarf_Debug const debug = object.get();
  kivcrash::DwarfError error(debug);
  auto const next = [&](Dwarf_Die die) {
    Dwarf_Die found = nullptr;
    return kivcrash::Die(dwarf_siblingof_b(debug, die, TRUE, &found, &error) == DW_DLV_OK ? found : nullptr);
  };
  Dwarf_Unsigned number = 0;
  Dwarf_Half half = 0;
  Dwarf_Sig8 signature{};
  while (dwarf_next_cu_header_d(debug, TRUE, &number, &half, &number, &half, &half, &half, &signature, &number, &number,
                                &half, &error) == DW_DLV_OK) {
    kivcrash::Die const unit = next(nullptr);
    auto const ranges = kivcrash::rangesOf(debug, unit.get());
    Dwarf_Die child = nullptr;
    if (ranges.empty() || dwarf_child(unit.get(), &child, &error) != DW_DLV_OK)
      continue;
    for (kivcrash::Die die(child); die; die = next(die.get()))
      if (std::uint64_t const place = placeOfSibling(debug, die.get(), *image)) {
        Dwarf_Off self = 0;
        dwarf_die_CU_offset(die.get(), &self, &error);
        std::string bytes = sound;
        return {bytes.replace(place, 4, bytesOf(static_cast<std::uint32_t>(self))), ranges[0].begin - image->base()};
      }
  }
  return {};
}

TEST(KivcrashDamage, OfAnEntryThatIsNextToItselfIsNoCircle) {
  Circle const circle = circleIn(support::readFile(support::binFolder() + "\\crash_plug.dll").value());
  ASSERT_NE(circle.offset, 0u);
  std::string reason;
  auto const image = kivcrash::Image::read(std::make_shared<std::string const>(circle.bytes), reason);
  kivcrash::DebugSymbols symbols(image.value());
  symbols.at(circle.offset); // and ends
}

/// Everything that can be asked of debug symbols; libdwarf reads whatever is there.
TEST(KivcrashDamage, OfDebugSymbolsDoesNoHarm) {
  std::string const sound = support::readFile(support::binFolder() + "\\crash_plug.dll").value();
  support::Random random(34);
  std::size_t read = 0;
  for (std::size_t i = 0; i < support::times(kFiles / 5); ++i) {
    std::string reason;
    std::string bytes = sound;
    std::size_t const from = sound.find("crash_plug.cpp") / 2; // the larger part of the damage is in the symbols
    bytes.replace(from, std::string::npos, support::damaged(sound.substr(from), random));
    auto const image = kivcrash::Image::read(std::make_shared<std::string const>(bytes), reason);
    if (!image)
      continue;
    try {
      kivcrash::DebugSymbols symbols(*image);
      for (std::uint64_t offset = 0x1000; offset < 0x3000; offset += 0x40)
        symbols.at(offset);
      ++read;
    } catch (std::runtime_error const & error) {
      ASSERT_FALSE(std::string(error.what()).empty());
    }
  }
  EXPECT_GT(read, 0u);
}

} // namespace
