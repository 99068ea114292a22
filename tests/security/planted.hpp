#pragma once
/// \file
/// Libraries and programs that somebody has put where they do not belong, and which of them were run.

#include "support/data/files.hpp"
#include "support/data/lines.hpp"
#include "tools/winapi.hpp"

#include <gtest/gtest.h>

#include <cctype>
#include <cstdlib>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace sectest {

inline std::string lower(std::string text) {
  for (char & c : text)
    c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  return text;
}

inline void copy(std::string const & from, std::string const & to) {
  EXPECT_TRUE(CopyFileA(from.c_str(), to.c_str(), TRUE)) << to << ' ' << GetLastError();
}

/// A copy of a file of the bin folder.
inline void copyOfBin(std::string const & name, std::string const & to) { copy(support::binFolder() + name, to); }

inline void makeFolder(std::string const & path) { EXPECT_TRUE(CreateDirectoryA(path.c_str(), nullptr)) << path; }

/// Copies of the library planted.dll, and the record of those that were loaded as code, by this process or a child.
///
/// \code
///   Planted planted;
///   planted.put("winhttp.dll"); // in the working folder
///   useTheLibrary();
///   EXPECT_EQ(planted.loaded(), Lines{});
/// \endcode
class Planted {
public:
  Planted() { _putenv(("KIVARA_PLANTED=" + record()).c_str()); }
  Planted(Planted const &) = delete;
  Planted & operator=(Planted const &) = delete;
  ~Planted() { _putenv("KIVARA_PLANTED="); }

  static void put(std::string const & path) { copyOfBin("planted.dll", path); }

  /// For a child: what was loaded is recorded, and ends it.
  std::map<std::string, std::optional<std::string>> ending() const {
    return {{"KIVARA_PLANTED", record()}, {"KIVARA_PLANTED_ENDS", "1"}};
  }

  /// The files that were loaded, in lower case.
  std::vector<std::string> loaded() const { return column(0); }
  /// The command lines of the programs that loaded them.
  std::vector<std::string> seen() const { return column(1); }

private:
  std::string record() const { return folder_ / "record.txt"; }

  std::vector<std::string> column(int which) const {
    std::vector<std::string> texts;
    for (std::string const & line : support::linesOf(support::readFile(record()).value_or(""))) {
      std::size_t const tab = line.find('\t');
      texts.push_back(which == 0 ? lower(line.substr(0, tab)) : line.substr(tab + 1));
    }
    return texts;
  }

  support::TempFolder folder_;
};

} // namespace sectest
