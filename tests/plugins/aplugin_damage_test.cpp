// Plug-ins whose headers, exports and resources were damaged, loaded by a child process.
//
// A library is code: what the system takes for one runs. Where it begins is therefore left alone here, and damaged exports may lead
// anywhere in it, so that a fault may come from its own code. Wine's loader follows some damaged headers without a check.

#include "plugin_run.hpp"
#include "support/data/damage.hpp"
#include "support/processes/child_process.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <set>
#include <string>
#include <vector>

namespace {

constexpr std::size_t kPluginsOfOneRun = 25;

struct Part {
  std::size_t begin;
  std::size_t size;
};

/// The places in a file that are damaged.
struct Layout {
  explicit Layout(std::string const & file) {
    std::size_t const start = *reinterpret_cast<std::uint32_t const *>(file.data() + 0x3C);
    auto const * const headers = reinterpret_cast<IMAGE_NT_HEADERS64 const *>(file.data() + start);
    entryPoint = start + offsetof(IMAGE_NT_HEADERS64, OptionalHeader.AddressOfEntryPoint);
    parts.push_back({0, headers->OptionalHeader.SizeOfHeaders});
    IMAGE_SECTION_HEADER const * section = IMAGE_FIRST_SECTION(headers);
    for (int i = 0; i < headers->FileHeader.NumberOfSections; ++i, ++section)
      for (char const * const name : {".edata", ".rsrc"})
        if (std::strncmp(reinterpret_cast<char const *>(section->Name), name, sizeof section->Name) == 0)
          parts.push_back({section->PointerToRawData, section->Misc.VirtualSize});
  }

  std::vector<Part> parts;
  std::size_t entryPoint = 0;
};

std::string damagedPlugin(std::string const & sound, Layout const & layout, support::Random & random) {
  Part const part = layout.parts[random() % layout.parts.size()];
  std::string bytes = sound;
  bytes.replace(part.begin, part.size, support::damaged(sound.substr(part.begin, part.size), random));
  std::size_t const entry = sizeof(DWORD);
  if (bytes.size() >= layout.entryPoint + entry)
    bytes.replace(layout.entryPoint, entry, sound.substr(layout.entryPoint, entry));
  return bytes;
}

/// What the host prints for these libraries, a line for each that it comes to.
kivtest::Lines resultsOf(std::vector<std::string> const & paths) {
  std::string arguments = "-frail";
  for (std::string const & path : paths)
    arguments += " \"" + path + '"';
  std::string const output = support::runProgram({.program = "plugin_host", .arguments = arguments}).output;
  kivtest::Lines lines;
  for (std::size_t at = 0, end = 0; (end = output.find("\r\n", at)) != std::string::npos; at = end + 2)
    lines.push_back(output.substr(at, end - at));
  return lines;
}

/// The library's answers, and faults that are not the library's.
std::set<std::string> const kResults = {"78", "79", "80", "81", "82", "fault of the plug-in", "fault of the loader"};

TEST(PluginDamage, IsRefusedOrLeadsToTheCodeOfThePlugin) {
  std::string const sound = support::readFile(kivtest::fixturePath()).value();
  Layout const layout(sound);
  ASSERT_GE(layout.parts.size(), 2u);
  support::Random random(181);
  std::size_t loaded = 0;
  for (std::size_t run = 0; run < support::times(1); ++run) {
    support::TempFolder const folder;
    std::vector<std::string> paths;
    for (std::size_t i = 0; i < kPluginsOfOneRun; ++i) {
      paths.push_back(folder / ("p" + std::to_string(i) + ".dll"));
      support::writeFile(paths.back(), damagedPlugin(sound, layout, random));
    }
    while (!paths.empty()) {
      kivtest::Lines const results = resultsOf(paths);
      for (std::string const & result : results)
        ASSERT_TRUE(kResults.contains(result)) << result << ", run " << run << ", " << paths.front();
      loaded += static_cast<std::size_t>(std::count(results.begin(), results.end(), "78"));
      // Where the loader of the system itself gave up there is no line.
      std::size_t const done = std::max<std::size_t>(results.size(), 1);
      paths.erase(paths.begin(), paths.begin() + static_cast<std::ptrdiff_t>(std::min(done, paths.size())));
    }
    ASSERT_EQ(support::entriesOf(folder.path()).size(), kPluginsOfOneRun);
  }
  EXPECT_GT(loaded, 0u);
}

} // namespace
