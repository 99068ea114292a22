#pragma once
/// \file
/// Input as a fault of a disk, a cut connection or somebody's editor leaves it, made of sound input.
///
///     support::Random random(7);
///     for (std::size_t i = 0; i < support::times(1'000); ++i)
///       ASSERT_NO_FATAL_FAILURE(expectRead(support::damaged(kSound, random, {.pieces = {"\"", "\r\n"}})));
///
/// docs/damaged-input.md has a row for each format; a test that includes this header is named there.

#include "support/data/random.hpp"

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

namespace support {

/// Where a format decides, so that damage is more often there.
struct WeakPlaces {
  /// What has a meaning in the format: put in anywhere.
  std::vector<std::string> pieces = {};
  /// In half of the cases the damage lies in so many bytes at the end, such as those of a directory; 0: anywhere.
  std::size_t end = 0;
  /// How many changes there are at most.
  std::size_t changes = 4;
};

/// The bytes with some of these changes; never the same bytes.
///
/// - bits flipped, bytes replaced
/// - pieces cut out, doubled or swapped; the rest cut off, within a text or a field too
/// - a number in four bytes, in eight bytes or in digits replaced by 0, -1, the largest or a neighbour of those
/// - NUL bytes, some thousand equal bytes, pieces of the format in the wrong place
/// - the text in another encoding: in UTF-16, after a byte order mark, with bytes that are no UTF-8
std::string damaged(std::string const & bytes, std::mt19937 & random, WeakPlaces const & places = {});

/// The same, up to the first NUL, as what takes a text with a NUL at its end sees it. It may be the sound text.
std::string damagedText(std::string const & text, std::mt19937 & random, WeakPlaces const & places = {});

/// The bytes and a NUL in a block of their own: under GuardPages, reading past the NUL faults.
std::unique_ptr<char[]> ownBlock(std::string const & bytes);

} // namespace support
