#pragma once
/// \file
/// Texts to read.

#include <cstddef>
#include <random>
#include <string>
#include <vector>

namespace bench {

/// Lines of text like that of a program, each of about \p lineLength characters, together \p total characters or a few more.
inline std::vector<std::string> sampleLines(std::size_t lineLength, std::size_t total) {
  static constexpr char const * kPieces[] = {"process",    "=", "(",  "name",      ",",  " ", "order.item",
                                             ")",          ";", "\t", "-1.5e3",    "if", " ", "a",
                                             "Department", " ", "\"", "hand over", "\"", ":"};
  std::mt19937 random(7);
  std::vector<std::string> lines;
  for (std::size_t size = 0; size < total; size += lines.back().size()) {
    std::string line;
    while (line.size() < lineLength)
      line.append(kPieces[random() % std::size(kPieces)]).append(random() % 3 == 0 ? " " : "");
    lines.push_back(line + '\n');
  }
  return lines;
}

} // namespace bench
