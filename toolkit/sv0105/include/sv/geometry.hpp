#pragma once
/// \file
/// Points, sizes and rectangles, in pixels unless a user says otherwise.

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

/// A rectangle by its corner and size.
class Rectangle {
public:
  Rectangle() = default;
  Rectangle(Point const & topLeft, Size const & size) : topLeft_(topLeft), size_(size) {} ///< any size, kept as it is

  Point const & TopLeft() const { return topLeft_; } ///< its corner
  Size const & GetSize() const { return size_; }

private:
  Point topLeft_;
  Size size_;
};

} // namespace SV
