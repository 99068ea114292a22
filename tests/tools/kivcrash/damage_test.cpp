// Dumps, reports, archives and debug symbols that are damaged in every way: what can be said is said, and nothing else happens.
#include "crashfile.hpp"
#include "debugsymbols.hpp"
#include "findings.hpp"
#include "jsonoutput.hpp"
#include "support/allocation.hpp"
#include "support/files.hpp"
#include "support/random.hpp"
#include "textoutput.hpp"
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

/// Bytes are changed, cut out, put in, or all after one is cut off.
std::string damaged(std::string bytes, std::mt19937 & random) {
  static constexpr std::uint32_t kExtremes[] = {0, 1, 0x7FFFFFFF, 0x80000000, 0xFFFFFFFF, 0xFFFFFFF0};
  for (std::size_t count = 1 + random() % 4; count > 0; --count) {
    std::size_t const at = random() % (bytes.size() + 1);
    switch (random() % 8) {
    case 0: bytes.resize(at); break;
    case 1: bytes.insert(at, 1 + random() % 9, static_cast<char>(random())); break;
    case 2: bytes.erase(at, 1 + random() % 9); break;
    case 3:
    case 4:
      if (at + 4 <= bytes.size())
        bytes.replace(at, 4, bytesOf(kExtremes[random() % std::size(kExtremes)]));
      break;
    default:
      if (at < bytes.size())
        bytes[at] = static_cast<char>(random());
    }
  }
  return bytes;
}

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

/// The exit code is not zero if a problem is told.
void expectProblems(unsigned seed, std::string const & sound) {
  support::GuardPages const guard;
  support::Random random(seed);
  for (std::size_t i = 0; i < support::times(kFiles); ++i) {
    std::string const bytes = damaged(sound, random);
    if (bytes == sound)
      continue;
    ASSERT_FALSE(findIn(bytes).problems.empty()) << i;
  }
}

TEST(KivcrashDamage, OfADumpIsNamed) { expectProblems(31, soundDump().bytes()); }

TEST(KivcrashDamage, OfAReportIsNamed) { expectProblems(32, kReport); }

TEST(KivcrashDamage, OfAnArchiveIsNamed) {
  expectProblems(33, zipOf({{"orders.exe.1.dmp", soundDump().bytes()}, {"orders.exe.log", kReport}}));
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
    bytes.replace(from, std::string::npos, damaged(sound.substr(from), random));
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
