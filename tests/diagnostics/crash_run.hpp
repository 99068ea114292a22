#pragma once
/// \file
/// A run of the child program crash_ways, with its boxes and what it leaves in the temporary folder.

#include "support/child_process.hpp"
#include "support/files.hpp"
#include "support/lines.hpp"
#include "support/windows.hpp"
#include "tools/winapi.hpp"

#include "fixed_values.hpp"

#include <gtest/gtest.h>

#include <map>
#include <optional>
#include <string>
#include <vector>

namespace kivtest {

using Lines = std::vector<std::string>;
using Environment = std::map<std::string, std::optional<std::string>>;

/// The text of a report as it was before each byte was scrambled, and the other way round.
inline std::string scrambled(std::string text) {
  for (char & c : text)
    c = static_cast<char>(static_cast<unsigned char>(c) ^ kivara::fixed::kReportKey);
  return text;
}

/// How the program is run.
struct CrashStart {
  std::string words;
  Environment environment = {};
  std::string program = "crash_ways";
  /// What lies in the temporary folder before, by name.
  std::map<std::string, std::string> filesBefore = {};
};

/// \code
///   CrashRun run({"read"});
///   EXPECT_EQ(run.exitCode(), STATUS_ACCESS_VIOLATION);
///   EXPECT_NE(run.report().find("ACCESS_VIOLATION"), std::string::npos);
/// \endcode
class CrashRun {
public:
  /// Runs to the end. All boxes are read and answered with OK. Reports are plain unless the environment says otherwise.
  explicit CrashRun(CrashStart start) : program_(start.program) {
    for (auto const & [name, bytes] : start.filesBefore)
      support::writeFile(folder_ / name, bytes);
    start.environment.emplace("KIVDUMP_NO_ENCRYPT", "1");
    start.environment.emplace("TMP", folder_.path());
    support::ChildProcess child({.program = program_, .arguments = start.words, .environment = start.environment});
    answerBoxes(child);
    exitCode_ = child.waitForEnd();
    output_ = support::linesOf(child.output());
    errors_ = support::linesOf(child.errors());
  }

  unsigned long exitCode() const { return exitCode_; }
  Lines const & output() const { return output_; }
  Lines const & errors() const { return errors_; }
  std::vector<support::BoxTexts> const & boxes() const { return boxes_; }

  std::string const & folder() const { return folder_.path(); }
  std::string reportPath() const { return folder_ / (program_ + ".exe.log"); }
  /// The bytes of the report file; empty where there is none.
  std::string report() const { return support::readFile(reportPath()).value_or(""); }
  Lines lines() const { return support::linesOf(report()); }
  Lines files() const { return support::entriesOf(folder_.path()); }
  /// The file whose name ends so; empty where there is none.
  std::string fileEndingIn(std::string const & ending) const {
    for (auto const & name : files())
      if (name.size() > ending.size() && name.ends_with(ending))
        return folder_ / name;
    return "";
  }

private:
  void answerBoxes(support::ChildProcess const & child) {
    while (child.running())
      if (HWND const box =
              support::waitForWindow({.processId = child.processId(), .className = support::kBoxClass}, 0)) {
        boxes_.push_back(support::readBox(box));
        EXPECT_TRUE(support::pressButton(box, IDOK));
        support::waitUntilGone(box);
      } else {
        support::pause(0.01);
      }
  }

  support::TempFolder const folder_;
  std::string const program_;
  unsigned long exitCode_ = 0;
  Lines output_;
  Lines errors_;
  std::vector<support::BoxTexts> boxes_;
};

/// The lines from the one that begins so up to the next empty one; empty where there is none.
inline Lines sectionOf(Lines const & lines, std::string const & beginning) {
  Lines section;
  for (auto const & line : lines)
    if (!section.empty() || line.starts_with(beginning)) {
      if (line.empty())
        break;
      section.push_back(line);
    }
  return section;
}

} // namespace kivtest
