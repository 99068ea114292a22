#pragma once
/// \file
/// One run of a child program on the application frame, in a working folder of its own.
///
///     ProductRun run("frame_facts", "-h14");
///     EXPECT_EQ(run.exitCode(), 0u);
///     EXPECT_EQ(run.fact("height"), "14");

#include "support/data/files.hpp"
#include "support/processes/child_process.hpp"
#include "support/windows/windows.hpp"

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

class ProductRun {
public:
  /// The variables of the child programs without their "KIVARA_".
  using Settings = std::map<std::string, std::string>;

  ProductRun(std::string const & program, std::string const & arguments, Settings const & settings = {});
  /// \param start  the record is filled in, and the working folder if it is empty
  explicit ProductRun(support::ProgramStart start, Settings const & settings = {});

  support::ChildProcess & child() { return *child_; }
  unsigned long exitCode() const { return child_->waitForEnd(); }

  /// A file in the program's working folder.
  std::string path(std::string const & file) const { return *folder_ / file; }
  std::optional<std::string> file(std::string const & name) const { return support::readFile(path(name)); }
  support::TempFolder const & folder() const { return *folder_; }

  /// What the program recorded so far, line by line.
  std::vector<std::string> record() const;
  /// Waits for a line of the record; false when it does not come before the program ends.
  bool waitForRecord(std::string const & line) const;

  /// Waits for the end and gives what the program printed as "name=value"; "(none)" for a name that it did not print.
  std::string fact(std::string const & name) const;

  /// The program's message box; null when it ends without one.
  HWND__ * box() const;
  /// What the box says. Then its button of that label is pressed.
  support::BoxTexts answerBox(std::string const & button = "OK") const;

private:
  // The folder is older, and goes away after the process.
  std::unique_ptr<support::TempFolder> folder_ = std::make_unique<support::TempFolder>();
  std::unique_ptr<support::ChildProcess> child_;
};

/// The lines of a text, without their ends.
std::vector<std::string> linesOf(std::string const & text);
