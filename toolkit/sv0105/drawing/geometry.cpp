#include "sv/geometry.hpp"

#include "tools/winapi.hpp"

#include <algorithm>
#include <climits>

namespace SV {

namespace {

using Wide = long long;

long fitting(Wide value) { return static_cast<long>(std::clamp<Wide>(value, LONG_MIN, LONG_MAX)); }

long sideBetween(Wide first, Wide pastLast) { return fitting(pastLast - first); }

/// The first place after a side.
long pastSide(Wide start, Wide side) { return fitting(start + side); }

} // namespace

Rectangle::Rectangle(long left, long top, long right, long bottom)
    : topLeft_{left, top}, size_{sideBetween(left, Wide{right} + 1), sideBetween(top, Wide{bottom} + 1)} {}

Rectangle::Rectangle(RECT const & rectangle)
    : topLeft_{rectangle.left, rectangle.top}, size_{sideBetween(rectangle.left, rectangle.right),
                                                     sideBetween(rectangle.top, rectangle.bottom)} {}

long Rectangle::Right() const { return pastSide(topLeft_.x, Wide{size_.width} - 1); }

long Rectangle::Bottom() const { return pastSide(topLeft_.y, Wide{size_.height} - 1); }

Rectangle Rectangle::GetIntersection(Rectangle const & other) const {
  if (IsEmpty() || other.IsEmpty())
    return Rectangle();
  Rectangle const common(std::max(Left(), other.Left()), std::max(Top(), other.Top()), std::min(Right(), other.Right()),
                         std::min(Bottom(), other.Bottom()));
  return common.IsEmpty() ? Rectangle() : common;
}

RECT Rectangle::ToSystem() const {
  return {topLeft_.x, topLeft_.y, pastSide(topLeft_.x, size_.width), pastSide(topLeft_.y, size_.height)};
}

} // namespace SV
