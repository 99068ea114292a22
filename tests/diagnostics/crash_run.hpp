#pragma once
/// \file
/// A run of the child program crash_ways, with its boxes and what it leaves in the temporary folder.

#include "support/data/files.hpp"
#include "support/data/lines.hpp"
#include "support/processes/child_process.hpp"
#include "support/windows/windows.hpp"
#include "tools/winapi.hpp"

#include "fixed_values.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <cstdio>
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
  /// A folder below the run's own that is the temporary one; by itself it is the run's own.
  std::string temporaryFolder = "";
  bool makesTemporaryFolder = true;
  /// The path of the archiver: the program is run from a folder of its own and has it below. The run ends when it has packed.
  std::string archiver = "";
};

/// A run without a minidump, which takes seconds under Wine, and without boxes.
inline CrashStart quick(std::string const & words, Environment const & environment = {}) {
  return {.words = "suppress fail:MiniDumpWriteDump " + words, .environment = environment};
}

/// \code
///   CrashRun run({"read"});
///   EXPECT_EQ(run.exitCode(), STATUS_ACCESS_VIOLATION);
///   EXPECT_NE(run.report().find("ACCESS_VIOLATION"), std::string::npos);
/// \endcode
class CrashRun {
public:
  /// Runs to the end. All boxes are read and answered with OK. Reports are plain unless the environment says otherwise.
  explicit CrashRun(CrashStart start)
      : program_(start.program),
        temporary_(start.temporaryFolder.empty() ? folder_.path() : folder_ / start.temporaryFolder) {
    if (start.makesTemporaryFolder)
      CreateDirectoryA(temporary_.c_str(), nullptr);
    for (auto const & [name, bytes] : start.filesBefore)
      support::writeFile(temporary_ + '\\' + name, bytes);
    start.environment.emplace("KIVDUMP_NO_ENCRYPT", "1");
    start.environment.emplace("TMP", temporary_);
    std::string const path = start.archiver.empty() ? program_ : install(start);
    support::ChildProcess child(
        {.program = path, .arguments = start.words, .environment = start.environment, .workingFolder = folder_.path()});
    answerBoxes(child);
    exitCode_ = child.waitForEnd();
    if (!start.archiver.empty()) // which ends with the child's job
      support::eventually([this] { return isPacked(fileEndingIn(".crash")); }, kLongestPacking);
    output_ = support::linesOf(child.output());
    errors_ = support::linesOf(child.errors());
  }

  unsigned long exitCode() const { return exitCode_; }
  Lines const & output() const { return output_; }
  Lines const & errors() const { return errors_; }
  std::vector<support::BoxTexts> const & boxes() const { return boxes_; }

  /// The temporary folder.
  std::string const & folder() const { return temporary_; }
  /// Where the program was started.
  std::string const & workingFolder() const { return folder_.path(); }
  std::string reportPath() const { return temporary_ + '\\' + program_ + ".exe.log"; }
  /// The bytes of the report file; empty where there is none.
  std::string report() const { return support::readFile(reportPath()).value_or(""); }
  Lines lines() const { return support::linesOf(report()); }
  Lines files() const { return support::entriesOf(temporary_); }
  /// The file whose name ends so; empty where there is none.
  std::string fileEndingIn(std::string const & ending) const {
    for (auto const & name : files())
      if (name.size() > ending.size() && name.ends_with(ending))
        return temporary_ + '\\' + name;
    return "";
  }

private:
  static constexpr double kLongestPacking = 60; // seconds

  /// The archiver keeps the file open until it is complete.
  static bool isPacked(std::string const & archive) {
    HANDLE const file = CreateFileA(archive.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr);
    CloseHandle(file);
    return file != INVALID_HANDLE_VALUE;
  }

  /// Puts the program and the archiver into a folder of the run's own.
  /// \return the path of the program
  std::string install(CrashStart & start) const {
    std::string const folder = folder_ / "program";
    for (std::string const part : {"", "\\tools", "\\tools\\zip"})
      EXPECT_TRUE(CreateDirectoryA((folder + part).c_str(), nullptr));
    std::string const path = folder + '\\' + program_ + ".exe";
    EXPECT_TRUE(CopyFileA((support::binFolder() + program_ + ".exe").c_str(), path.c_str(), TRUE));
    EXPECT_TRUE(CopyFileA(start.archiver.c_str(), (folder + "\\tools\\zip\\7za.exe").c_str(), TRUE));
    start.environment.emplace("PATH", support::binFolder());
    return path;
  }

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
  std::string const temporary_;
  unsigned long exitCode_ = 0;
  Lines output_;
  Lines errors_;
  std::vector<support::BoxTexts> boxes_;
};

/// What a program writes to stderr that leaves a report and, if so, a minidump.
inline Lines errorLines(unsigned long code, bool hasMinidump = true) {
  char text[64];
  std::snprintf(text, sizeof text, "[exception] An exception of type 0x%08lX occured", code);
  return {text, hasMinidump ? "Minidump dmp created." : "MiniDumpWriteDump failed", "[exception] creating CrashDump",
          "[exception] finished dumpfile creation"};
}

/// The text with each digit as 9, to compare the forms of lines.
inline std::string form(std::string text) {
  std::replace_if(
      text.begin(), text.end(), [](unsigned char c) { return std::isdigit(c) != 0; }, '9');
  return text;
}

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
