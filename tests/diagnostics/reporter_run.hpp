#pragma once
/// \file
/// A run of the child program error_reporter under a debugger, with its boxes.

#include "aappinfo.hpp"
#include "support/data/lines.hpp"
#include "support/processes/debugger.hpp"
#include "support/windows/windows.hpp"
#include "tools/winapi.hpp"

#include <gtest/gtest.h>

#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace kivtest {

using Lines = std::vector<std::string>;
using support::linesOf;

/// The code of the internal error that the program reports: the module's name, the line and the version.
inline std::string errorCode(std::string const & module = "aevent", int line = 246) {
  return module + "-" + std::to_string(line) + " [" + Kiv_GetPatchBuildVersionString().c_str() + "]";
}

/// \code
///   ReporterRun run("-assert error");
///   EXPECT_EQ(run.answerBox(IDOK).title, "...");
///   EXPECT_EQ(run.lines(), ...);
/// \endcode
class ReporterRun {
public:
  using Environment = std::map<std::string, std::optional<std::string>>;

  explicit ReporterRun(std::string const & words, Environment const & environment = {}, support::DebugRule rule = {})
      : debugger_({.program = "error_reporter", .arguments = words, .environment = environment}, std::move(rule)) {}

  support::Debugger const & debugger() const { return debugger_; }

  /// The box that is open, or the next one; null when the program ends without one.
  HWND box() const {
    HWND found = nullptr;
    support::eventually([&] {
      bool const last = !debugger_.process().running();
      found =
          support::waitForWindow({.processId = debugger_.process().processId(), .className = support::kBoxClass}, 0);
      return found != nullptr || last;
    });
    return found;
  }

  /// What the box says. Then its button is pressed.
  support::BoxTexts answerBox(int button) const {
    HWND const open = box();
    support::BoxTexts const read = support::readBox(open);
    EXPECT_TRUE(support::pressButton(open, button));
    support::waitUntilGone(open);
    return read;
  }

  /// What the program printed, once it has ended as it should.
  Lines lines() const {
    EXPECT_EQ(debugger_.waitForEnd(), 0u);
    return linesOf(debugger_.process().output());
  }

  /// How often the program stopped in the debugger, once it has ended.
  std::size_t stops() const {
    debugger_.waitForEnd();
    std::size_t count = 0;
    for (support::DebuggedException const & each : debugger_.exceptions())
      count += each.code == static_cast<unsigned long>(STATUS_BREAKPOINT) ? 1 : 0;
    return count;
  }

  /// What it wrote to the debugger, once it has ended; without the languages that it found at its start.
  Lines texts() const {
    debugger_.waitForEnd();
    Lines texts = debugger_.texts();
    std::erase_if(texts, [](std::string const & text) { return text.starts_with("[locale] "); });
    return texts;
  }

private:
  support::Debugger debugger_;
};

} // namespace kivtest
