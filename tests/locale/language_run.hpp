#pragma once
/// \file
/// A product in a program folder that the test lays out.
///
///     LanguageFolder folder;
///     folder.write("lang.ini", "2057\n1031\n");
///     folder.addPack("2057\\kivara72.dll", "language\\2057\\texts72.dll");
///     EXPECT_EQ(folder.facts("create texts 1|chain").at("chain"), "language\\2057\\texts72.dll");

#include "support/data/files.hpp"
#include "support/processes/debugger.hpp"

#include <gtest/gtest.h>

#include <map>
#include <string>
#include <vector>

/// A folder with the program language_product; the DLLs are found in the bin folder.
class LanguageFolder {
public:
  using Facts = std::map<std::string, std::string>;

  LanguageFolder();

  std::string const & path() const { return folder_.path(); }

  /// Writes a file; its folders are made.
  void write(std::string const & name, std::string_view bytes) const;

  /// Copies a resource DLL, such as "language\\2057\\kivara72.dll", from the bin folder.
  void addPack(std::string const & source, std::string const & name) const;

  /// How the product is started with these steps.
  support::ProgramStart start(std::string const & steps, std::string const & arguments = "") const;

  /// Runs the steps to the end and gives what was printed; the last value of a name counts.
  Facts facts(std::string const & steps, std::string const & arguments = "") const;

  /// Runs the steps under a debugger and gives the debug output.
  std::vector<std::string> debugTexts(std::string const & steps, std::string const & arguments = "") const;

private:
  support::TempFolder folder_;
};

/// "name=value" lines.
LanguageFolder::Facts factsOf(std::string const & output);

/// The bytes of a file of texts in the packed form, with the mask of this build.
std::string packedTexts(std::vector<std::pair<unsigned long, std::string>> const & texts);

/// Whether the text has the part in it.
testing::AssertionResult holds(std::string const & text, std::string const & part);

/// Whether one of the texts is this one, and whether one has it in it.
testing::AssertionResult tells(std::vector<std::string> const & texts, std::string const & text);
testing::AssertionResult anyHolds(std::vector<std::string> const & texts, std::string const & part);
