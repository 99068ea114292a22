#pragma once
/// \file
/// Points, sizes and rectangles, in pixels unless a user says otherwise.

#include "sv/export.hpp"

struct tagRECT;

namespace SV {

/// A place, counted to the right and down.
struct Point {
  long x = 0;
  long y = 0;
};

/// How wide and high something is; 0 by 0 is nothing.
struct Size {
  long width = 0;
  long height = 0;
};

inline bool operator==(Point const & a, Point const & b) { return a.x == b.x && a.y == b.y; } ///< in both
inline bool operator==(Size const & a, Size const & b) { return a.width == b.width && a.height == b.height; }

/// A rectangle by its corner and size, or by its four edges, which all belong to it: one of 1 by 1 has its right edge where
/// its left one is. A side below 1 makes it empty; such a side is kept as it is, so that a rectangle of width 0 has its right
/// edge one pixel before its left one. An edge or a side that does not fit into 32 bits is the nearest number that does.
///
/// \code
///   SV::Rectangle const whole({0, 0}, device.GetOutputSizePixel());
///   SV::Rectangle const lastLine(whole.Left(), whole.Bottom(), whole.Right(), whole.Bottom());
/// \endcode
class Rectangle {
public:
  Rectangle() = default; ///< empty, at (0, 0)
  Rectangle(Point const & topLeft, Size const & size) : topLeft_(topLeft), size_(size) {}
  SV_API Rectangle(long left, long top, long right, long bottom);
  /// The system's rectangle, whose right and bottom edges no longer belong to it; ToSystem is the way back.
  SV_API explicit Rectangle(tagRECT const & rectangle);

  long Left() const { return topLeft_.x; }
  long Top() const { return topLeft_.y; }
  SV_API long Right() const;
  SV_API long Bottom() const;

  Point const & TopLeft() const { return topLeft_; }
  Size const & GetSize() const { return size_; }
  long GetWidth() const { return size_.width; }
  long GetHeight() const { return size_.height; }
  bool IsEmpty() const { return size_.width < 1 || size_.height < 1; } ///< a side is below 1

  /// What lies in both; empty when nothing does.
  SV_API Rectangle GetIntersection(Rectangle const & other) const;

  /// As the system counts: right and bottom are the first ones outside.
  SV_API tagRECT ToSystem() const;

private:
  Point topLeft_;
  Size size_;
};

inline bool operator==(Rectangle const & a, Rectangle const & b) {
  return a.TopLeft() == b.TopLeft() && a.GetSize() == b.GetSize();
}

} // namespace SV
