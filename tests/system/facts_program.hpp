#pragma once
/// \file
/// The child program platform_facts in a folder of its own, so that files can be put beside it.

#include "support/child_process.hpp"
#include "support/files.hpp"
#include "tools/winapi.hpp"

#include <gtest/gtest.h>

#include <map>
#include <optional>
#include <string>

namespace kivtest {

/// Its DLLs stay where they are: the system finds them through PATH.
class FactsProgram {
public:
  explicit FactsProgram(std::string const & name = "facts") : file_(folder_ / (name + ".exe")) {
    copy("platform_facts", file_);
  }

  /// A file in the program's folder.
  std::string beside(std::string const & name) const { return folder_ / name; }
  void put(std::string const & name) const { support::writeFile(beside(name), "not looked into"); }
  /// Another program of the bin folder, under a name of its own.
  void putProgram(std::string const & program, std::string const & name) const { copy(program, beside(name)); }

  using Environment = std::map<std::string, std::optional<std::string>>;

  /// What it prints for these questions.
  std::string answers(std::string const & questions, Environment environment = {}) const {
    return run({.program = file_, .arguments = questions, .environment = std::move(environment)});
  }

  /// The same, called by a name of the test's choice.
  std::string answersAs(std::string const & name, std::string const & questions, std::string const & workingFolder,
                        Environment environment = {}) const {
    return run({.program = file_,
                .commandLine = name + " " + questions,
                .environment = std::move(environment),
                .workingFolder = workingFolder});
  }

private:
  static void copy(std::string const & program, std::string const & to) {
    EXPECT_TRUE(CopyFileA((support::binFolder() + program + ".exe").c_str(), to.c_str(), TRUE)) << to;
  }

  static std::string run(support::ProgramStart start) {
    start.environment["PATH"] = support::binFolder() + ";C:\\windows\\system32";
    support::ProgramResult const result = support::runProgram(start);
    EXPECT_EQ(result.exitCode, 0u) << result.errors;
    std::string text;
    for (char const c : result.output)
      if (c != '\r')
        text += c;
    return text;
  }

  support::TempFolder folder_;
  std::string file_;
};

} // namespace kivtest
