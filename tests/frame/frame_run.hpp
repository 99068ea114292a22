#pragma once
/// \file
/// Running an application's Main inside of a test.

#include "sv/application.hpp"

#include <fstream>
#include <sstream>
#include <string>
#include <vector>

namespace kivtest {

/// Runs Main as the entry routine would, with these words after the program. Once in a process: the words must stay.
inline void runMain(SV::Application & application, std::vector<std::string> const & words = {}) {
  static std::vector<std::string> text{"tool.exe"};
  static std::vector<char *> argv;
  text.insert(text.end(), words.begin(), words.end());
  for (std::string & word : text)
    argv.push_back(word.data());
  application.Main(static_cast<int>(argv.size()), argv.data());
}

/// The bytes of a file; empty for one that cannot be read.
inline std::string contents(char const * name) {
  std::ifstream file(name, std::ios::binary);
  std::ostringstream text;
  text << file.rdbuf();
  return text.str();
}

} // namespace kivtest
