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
/// A line is looked for in the text from its start, and the break is made at the first place where it stands. So a long line
/// that the text has twice is broken in the first place both times, and counts as a line more each time: boxes have looked
/// like this ever since, and the label breaks the second one by itself.
WrappedText wrapText(SV::String const & text, long maxWidth, TextMeasure & measure);

} // namespace kivara
