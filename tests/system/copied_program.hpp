#pragma once
/// \file
/// A child program in a folder of its own, so that files can be put beside it.

#include "support/data/files.hpp"
#include "support/processes/child_process.hpp"
#include "tools/winapi.hpp"

#include <gtest/gtest.h>

#include <map>
#include <optional>
#include <string>

namespace kivtest {

/// Its DLLs stay where they are: the system finds them through PATH.
class CopiedProgram {
public:
  /// \param program  of the bin folder
  /// \param name     of the copy, without ".exe"
  CopiedProgram(std::string const & program, std::string const & name) : file_(folder_ / (name + ".exe")) {
    copy(program, file_);
  }

  /// A file in the program's folder.
  std::string beside(std::string const & name) const { return folder_ / name; }
  /// Another program of the bin folder, under a name of its own.
  void putProgram(std::string const & program, std::string const & name) const { copy(program, beside(name)); }

  using Environment = std::map<std::string, std::optional<std::string>>;

  /// How it is started with these arguments.
  support::ProgramStart start(std::string const & arguments, Environment environment = {}) const {
    environment["PATH"] = support::binFolder() + ";C:\\windows\\system32";
    return {.program = file_, .arguments = arguments, .environment = std::move(environment)};
  }

  /// What it prints for these arguments.
  std::string answers(std::string const & arguments, Environment environment = {}) const {
    return run(start(arguments, std::move(environment)));
  }

  /// The same, called by a name of the test's choice.
  std::string answersAs(std::string const & name, std::string const & arguments, std::string const & workingFolder,
                        Environment environment = {}) const {
    support::ProgramStart named = start(arguments, std::move(environment));
    named.commandLine = name + " " + arguments;
    named.workingFolder = workingFolder;
    return run(named);
  }

private:
  static void copy(std::string const & program, std::string const & to) {
    EXPECT_TRUE(CopyFileA((support::binFolder() + program + ".exe").c_str(), to.c_str(), TRUE)) << to;
  }

  static std::string run(support::ProgramStart const & start) {
    support::ProgramResult const result = support::runProgram(start);
    EXPECT_EQ(result.exitCode, 0u) << result.errors;
    std::string text = result.output;
    std::erase(text, '\r');
    return text;
  }

  support::TempFolder folder_;
  std::string file_;
};

} // namespace kivtest
