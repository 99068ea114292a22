#pragma once
/// \file
/// The words of the command line.

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace kivcrash {

struct Options {
  std::filesystem::path file;
  std::vector<std::filesystem::path> symbols; ///< in the order given
  bool allThreads = false;
  bool report = false;
  bool modules = false;
  bool json = false;
  bool help = false;
};

/// \param words  without the program's name
/// \param reason  gets what is wrong with them where there is no result
std::optional<Options> readOptions(std::vector<std::wstring> const & words, std::string & reason);

/// What --help prints.
char const * usage();

} // namespace kivcrash
