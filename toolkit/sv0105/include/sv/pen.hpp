#pragma once
/// \file
/// Pen and Brush: what lines and areas are drawn with.

#include "sv/color.hpp"

namespace SV {

/// A solid line.
class Pen {
public:
  /// No line at all.
  Pen() = default;
  /// \param width  in pixels; 0 and below count as 1
  explicit Pen(Color const & color, long width = 1) : color_(color), width_(width < 1 ? 1 : width) {}

  bool IsNone() const { return width_ == 0; } ///< nothing is drawn
  Color const & GetColor() const { return color_; }
  long GetWidth() const { return width_; }

private:
  Color color_;
  long width_ = 0;
};

/// A solid area.
class Brush {
public:
  /// No area at all.
  Brush() = default;
  explicit Brush(Color const & color) : color_(color), none_(false) {}

  bool IsNone() const { return none_; } ///< nothing is drawn
  Color const & GetColor() const { return color_; }

private:
  Color color_;
  bool none_ = true;
};

} // namespace SV
