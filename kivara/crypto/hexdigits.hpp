#pragma once
/// \file
/// Hexadecimal digits.

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>

namespace kivara::hex {

/// Both digits of each byte.
using Pairs = std::array<std::array<char, 2>, 256>;

constexpr Pairs pairsOf(char const (&digits)[17]) {
  Pairs pairs{};
  for (std::size_t byte = 0; byte < pairs.size(); ++byte)
    pairs[byte] = {digits[byte >> 4], digits[byte & 15]};
  return pairs;
}

inline constexpr Pairs kLower = pairsOf("0123456789abcdef");
inline constexpr Pairs kUpper = pairsOf("0123456789ABCDEF");

/// Writes two digits for each byte.
/// \return the end of what was written
inline char * write(unsigned char const * data, std::size_t length, char * out, Pairs const & pairs) {
  for (unsigned char const * const end = data + length; data != end; ++data, out += 2)
    std::memcpy(out, pairs[*data].data(), 2);
  return out;
}

constexpr std::array<std::int8_t, 256> digitValues() {
  std::array<std::int8_t, 256> values{};
  for (auto & value : values)
    value = -1;
  for (std::size_t i = 0; i < 10; ++i)
    values['0' + i] = static_cast<std::int8_t>(i);
  for (std::size_t i = 0; i < 6; ++i)
    values['a' + i] = values['A' + i] = static_cast<std::int8_t>(10 + i);
  return values;
}

inline constexpr std::array<std::int8_t, 256> kDigitValues = digitValues();

/// The value of a digit in upper or lower case; -1 for any other character.
constexpr int digitAt(char digit) { return kDigitValues[static_cast<unsigned char>(digit)]; }

} // namespace kivara::hex
