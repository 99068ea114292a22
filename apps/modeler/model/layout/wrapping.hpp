#pragma once
/// \file
/// Texts in lines.

#include "kivara.hpp"
#include "sv/geometry.hpp"

#include <functional>

namespace modeler {

/// How wide and high a line of text is in the font that it will be drawn with, in pixels.
using TextSize = std::function<SV::Size(SV::String const &)>;

/// Breaks a text between words, so that no line is wider than that; a single word may be. Blanks, tabs and line ends part
/// words. A text without words has no lines.
ISequence<SV::String> wrapped(SV::String const & text, long width, TextSize const & textSize);

/// The text, or as many of its first characters as have room with "..." after them. The dots are there in any case.
SV::String shortened(SV::String const & text, long width, TextSize const & textSize);

} // namespace modeler
