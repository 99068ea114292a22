#pragma once
/// \file
/// Internal: blocks of short strings that wait for the next string of their length.

#include "tools/string.hpp"

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>

namespace kivara {

/// A reader and a parser overwrite a few strings again and again, mostly with another length, and SV::String then frees a block
/// and allocates a new one. On some systems that costs more than all the rest of a token. Here such blocks are kept instead, at
/// most kDepth for each length up to kLongest, and SV::String overwrites one of the right length in place.
///
/// A block is kept only when it has no other owner, so no string changes that somebody else holds. One thread at a time.
///
/// Why not in the allocator of the tools library, where every string would gain: there the pool has to be safe for all threads,
/// and what the tests' guard pages find, blocks that are used after their end, would stay hidden in it. Under Wine, as a multiple
/// of the time of the peers in docs/benchmarks.md:
///
///                            none   in the allocator, lock-free   here   goal
///   lines of 60 characters   0.77   0.54                          0.27   0.50
///   tokens                   1.17   0.72                          0.41   0.67
template <std::int32_t kLongest, std::size_t kDepth> class SpareTexts {
public:
  /// As target.Assign; \p text must not be part of the target.
  void assign(SV::String & target, char const * text, std::int32_t length) {
    if (shared(target) || target.Len() != length)
      exchange(target, length);
    if (target.Len() != length)
      target.Assign(text, length);
    else
      copyShort(target.writable(), text, static_cast<std::size_t>(length));
  }

  /// Takes the block of a string that is about to be overwritten if there is a place for it; the string is then empty.
  void keep(SV::String & text) {
    Shelf * const shelf = shelfOf(text.Len());
    if (shelf != nullptr && shelf->count != kDepth && !shared(text))
      text.swap(shelf->texts[shelf->count++]);
  }

  /// Empties a string, and keeps its block if there is a place for it.
  void release(SV::String & text) {
    keep(text);
    if (text.Len() != 0)
      text = SV::String();
  }

private:
  struct Shelf {
    std::array<SV::String, kDepth> texts; // empty from count on
    std::size_t count = 0;
  };

  /// Gives the target a block of this length, or makes it empty if none waits.
  void exchange(SV::String & target, std::int32_t length) {
    release(target);
    if (Shelf * const shelf = shelfOf(length); shelf != nullptr && shelf->count != 0)
      target.swap(shelf->texts[--shelf->count]);
  }

  /// The runtime's memcpy takes longer to start than a token takes to copy. There is no loop over characters, since the
  /// processor cannot predict the length of the next token.
  static void copyShort(char * to, char const * from, std::size_t length) {
    if (length >= 16)
      copyByPieces<16>(to, from, length);
    else if (length >= 8)
      copyEnds<8>(to, from, length);
    else if (length >= 4)
      copyEnds<4>(to, from, length);
    else if (length != 0) {
      to[0] = from[0];
      to[length / 2] = from[length / 2];
      to[length - 1] = from[length - 1];
    }
  }

  /// One piece or more; the last one overlaps the one before it.
  template <std::size_t kPiece> static void copyByPieces(char * to, char const * from, std::size_t length) {
    for (std::size_t at = 0; at + kPiece < length; at += kPiece)
      std::memcpy(to + at, from + at, kPiece);
    std::memcpy(to + length - kPiece, from + length - kPiece, kPiece);
  }

  /// From one piece to two, which overlap.
  template <std::size_t kPiece> static void copyEnds(char * to, char const * from, std::size_t length) {
    std::memcpy(to, from, kPiece);
    std::memcpy(to + length - kPiece, from + length - kPiece, kPiece);
  }

  static bool shared(SV::String const & text) { return text.block()->nRefCount != 0; }

  Shelf * shelfOf(std::int32_t length) {
    return length > 0 && length <= kLongest ? &shelves_[static_cast<std::size_t>(length - 1)] : nullptr;
  }

  std::array<Shelf, kLongest> shelves_;
};

} // namespace kivara
