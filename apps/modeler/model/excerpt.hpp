#pragma once
/// \file
/// Words and file names for messages, short enough for a box that fits on the screen.

#include "tools/string.hpp"

namespace modeler {

inline constexpr int kLongestWord = 40;
inline constexpr int kLongestFileName = 60;

/// The start of a word, with "..." after it when more follows. Control characters become question marks: the word may come
/// from a file that is not a text.
SV::String excerptOfWord(SV::String const & word);

/// The end of a path, with "..." before it when it is longer.
SV::String excerptOfFileName(SV::String const & name);

} // namespace modeler
