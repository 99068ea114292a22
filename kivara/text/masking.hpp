#pragma once
/// \file
/// Texts in which some characters get another one in front. Internal.

#include <cstddef>

namespace kivara {

/// How many characters of a text are read, and how many come of them.
struct MaskedExtent {
  std::size_t read;
  std::size_t written;
};

/// The extent of a text of \p length characters, of which those that \p needsMask selects get one more. A result of more
/// than \p most characters is cut in front of the character that no longer fits.
template <class NeedsMask>
MaskedExtent maskedExtent(char const * text, std::size_t length, std::size_t most, NeedsMask const & needsMask) {
  MaskedExtent extent{length, length};
  for (std::size_t i = 0; i < length; ++i)
    extent.written += needsMask(text[i]) ? 1 : 0;
  while (extent.written > most)
    extent.written -= needsMask(text[--extent.read]) ? 2 : 1;
  return extent;
}

/// Writes the extent's characters to \p out, without a NUL, and gives the end of what was written: at most so many
/// characters as the extent tells, even where \p out overlaps the text.
template <class NeedsMask>
char * writeMasked(char const * text, MaskedExtent extent, char mask, char * out, NeedsMask const & needsMask) {
  char const * const end = out + extent.written;
  for (char const * const last = text + extent.read; text != last && out != end; ++text) {
    char const c = *text;
    if (needsMask(c)) {
      if (end - out < 2)
        break;
      *out++ = mask;
    }
    *out++ = c;
  }
  return out;
}

} // namespace kivara
