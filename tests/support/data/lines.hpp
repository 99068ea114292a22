#pragma once
/// \file
/// Texts of programs line by line.

#include <sstream>
#include <string>
#include <vector>

namespace support {

/// The lines of a text, without their ends.
inline std::vector<std::string> linesOf(std::string const & text) {
  std::vector<std::string> lines;
  std::istringstream stream(text);
  for (std::string line; std::getline(stream, line);) {
    if (!line.empty() && line.back() == '\r')
      line.pop_back();
    lines.push_back(line);
  }
  return lines;
}

} // namespace support
