#pragma once
/// \file
/// What the library sends to a debugger, seen from inside of the process.
///
///     support::DebugLines const debug;
///     KivDebugOut("[test] a line\n");
///     EXPECT_EQ(debug.of("[test]"), std::vector<std::string>{"[test] a line\n"});

#include "support/imports/import_hook.hpp"
#include "tools/winapi.hpp"

#include <string>
#include <string_view>
#include <vector>

namespace support {

/// From the first one on, the library believes that a debugger is attached, and its texts are kept. Each new one begins with none.
class DebugLines {
public:
  DebugLines() {
    lines().clear();
    replaceImports(GetModuleHandleA("kivara.dll"), "KERNEL32.dll",
                   {{"IsDebuggerPresent", reinterpret_cast<void *>(sayPresent)},
                    {"OutputDebugStringA", reinterpret_cast<void *>(keep)}});
  }

  /// All of them, one for each call.
  std::vector<std::string> const & all() const { return lines(); }

  /// Those that begin with the tag.
  std::vector<std::string> of(std::string_view tag) const {
    std::vector<std::string> found;
    for (std::string const & line : lines())
      if (line.starts_with(tag))
        found.push_back(line);
    return found;
  }

private:
  static std::vector<std::string> & lines() {
    static std::vector<std::string> theLines;
    return theLines;
  }
  static BOOL WINAPI sayPresent() { return TRUE; }
  static void WINAPI keep(char const * text) { lines().emplace_back(text); }
};

} // namespace support
