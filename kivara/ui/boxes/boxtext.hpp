#pragma once
/// \file
/// Breaks the text of a box into lines. Internal.

#include "tools/string.hpp"

#include <string_view>

namespace kivara {

/// How wide texts are in pixels. A text is at least as wide as each text that it begins with.
class TextMeasure {
public:
  virtual ~TextMeasure() = default;
  virtual long widthOf(std::string_view text) = 0;
};

struct WrappedText {
  SV::String text;
  long lines = 0; ///< as many as the box has room for
  long width = 0; ///< of the widest line, in pixels
};

/// Breaks each line that is wider than \p maxWidth after the last space with which its beginning fits; a line without such a
/// space stays. Newlines at the end are dropped, tabs are spaces, and the text ends at its first NUL.
///
/// The text is searched for a line from its start, and the break is made at the first match. So a long line that occurs
/// twice is broken at the first occurrence both times, and counts as one more line each time: boxes have always looked
/// like this, and the label breaks the second occurrence by itself.
WrappedText wrapText(SV::String const & text, long maxWidth, TextMeasure & measure);

} // namespace kivara
