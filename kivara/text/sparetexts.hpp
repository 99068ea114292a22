#pragma once
/// \file
/// Internal: blocks of short texts that wait for the next text of their length.

#include "tools/string.hpp"

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>

namespace kivara {

/// Lines and tokens are put into texts that held an earlier line or token a moment before, mostly one of another length, and
/// String then releases a block and builds a new one: on some systems that costs more than all the rest. Here such blocks are
/// kept, at most kDepth for each length up to kLongest, and String overwrites one of the right length in place.
///
/// A block is kept only when nobody else owns it, so that no block is shared behind anyone's back. One thread at a time.
template <std::int32_t kLongest, std::size_t kDepth> class SpareTexts {
public:
  /// As target.Assign; \p text lies elsewhere.
  void assign(SV::String & target, char const * text, std::int32_t length) {
    if (shared(target) || target.Len() != length)
      exchange(target, length);
    if (target.Len() != length)
      target.Assign(text, length);
    else
      copyShort(target.writable(), text, static_cast<std::size_t>(length));
  }

  /// Takes the block of a text that is about to be overwritten, if there is a place for it; the text is then empty.
  void keep(SV::String & text) {
    Shelf * const shelf = shelfOf(text.Len());
    if (shelf != nullptr && shelf->count != kDepth && !shared(text))
      text.swap(shelf->texts[shelf->count++]);
  }

private:
  struct Shelf {
    std::array<SV::String, kDepth> texts; // empty from count on
    std::size_t count = 0;
  };

  /// For a block of this length, or for the empty text where none waits.
  void exchange(SV::String & target, std::int32_t length) {
    keep(target);
    if (target.Len() != 0)
      target = SV::String();
    if (Shelf * const shelf = shelfOf(length); shelf != nullptr && shelf->count != 0)
      target.swap(shelf->texts[--shelf->count]);
  }

  /// The runtime's own copying takes longer to begin than a token takes to copy. Nothing here repeats for each character:
  /// how long the next token is can't be foreseen.
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

  /// At least one piece; the last one overlaps the one before it.
  template <std::size_t kPiece> static void copyByPieces(char * to, char const * from, std::size_t length) {
    for (std::size_t at = 0; at + kPiece < length; at += kPiece)
      std::memcpy(to + at, from + at, kPiece);
    std::memcpy(to + length - kPiece, from + length - kPiece, kPiece);
  }

  /// One to two pieces, which overlap.
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
