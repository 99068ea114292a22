#pragma once
/// \file
/// What a file of texts holds, and what is wrong with one.

#include <cstdint>
#include <string>
#include <vector>

namespace kivml {

/// A text in the code page of the program, under its resource identifier.
struct Text {
  std::uint32_t resId;
  std::string text;
};

/// What is wrong, with its place: the number of a line, or of a record, counted from 1. Place 0 is the whole file.
struct Fault {
  std::size_t place;
  std::string reason;
};

using Texts = std::vector<Text>;
using Faults = std::vector<Fault>;

/// Adds a fault for each identifier that stands in \p texts twice.
/// \param places  the place of each text
void findRepeatedIdentifiers(Texts const & texts, std::vector<std::size_t> const & places, Faults & faults);

inline constexpr std::uint32_t kLastIdentifier = 65535;

} // namespace kivml
