#pragma once
/// \file
/// Internal: texts in which an escape character is put before some characters.

#include <cstddef>

namespace kivara {

/// How many characters of a text are read, and how many are written for them.
struct MaskedExtent {
  std::size_t read;
  std::size_t written;
};

/// How many characters \p needsMask selects. Counted in blocks, for each of which the compiler needs only a few instructions.
template <class NeedsMask> std::size_t countMasked(char const * text, std::size_t length, NeedsMask const & needsMask) {
  constexpr int block = 64;
  std::size_t count = 0;
  for (; length >= block; length -= block, text += block) {
    unsigned char inBlock = 0;
    for (int i = 0; i < block; ++i)
      inBlock += needsMask(text[i]);
    count += inBlock;
  }
  for (std::size_t i = 0; i < length; ++i)
    count += needsMask(text[i]);
  return count;
}

/// The extent of a text of \p length characters; each one that \p needsMask selects is written as two. A result of more than
/// \p most characters is cut before the character that no longer fits.
template <class NeedsMask>
MaskedExtent maskedExtent(char const * text, std::size_t length, std::size_t most, NeedsMask const & needsMask) {
  MaskedExtent extent{length, length + countMasked(text, length, needsMask)};
  while (extent.written > most)
    extent.written -= needsMask(text[--extent.read]) ? 2 : 1;
  return extent;
}

/// Writes the extent's characters to \p out, without a NUL. The two must not overlap.
/// \return the end of what was written
template <class NeedsMask>
char * writeMasked(char const * text, MaskedExtent extent, char mask, char * out, NeedsMask const & needsMask) {
  for (char const * const end = text + extent.read; text != end; ++text) {
    if (needsMask(*text))
      *out++ = mask;
    *out++ = *text;
  }
  return out;
}

} // namespace kivara
