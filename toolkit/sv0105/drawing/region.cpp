#include "sv/region.hpp"

#include "drawing/limits.hpp"
#include "tools/winapi.hpp"

namespace SV {

namespace {

std::shared_ptr<HRGN__> owned(HRGN region) {
  return region ? std::shared_ptr<HRGN__>(region, [](HRGN last) { DeleteObject(last); }) : nullptr;
}

std::shared_ptr<HRGN__> regionOf(Rectangle const & rectangle) {
  // An inverted rectangle is empty here; the system would turn it round.
  RECT const area = rectangle.IsEmpty() ? RECT{} : detail::systemArea(rectangle);
  return owned(CreateRectRgnIndirect(&area));
}

} // namespace

Region::Region(Rectangle const & rectangle) : region_(regionOf(rectangle)) {}

bool Region::IsEmpty() const {
  RECT bounds;
  return region_ && GetRgnBox(region_.get(), &bounds) == NULLREGION;
}

Rectangle Region::GetBoundRect() const {
  RECT bounds = {};
  if (region_)
    GetRgnBox(region_.get(), &bounds);
  return Rectangle(bounds);
}

void Region::Union(Rectangle const & rectangle) {
  if (region_)
    combine(rectangle, RGN_OR);
}

void Region::Intersect(Rectangle const & rectangle) {
  if (region_)
    combine(rectangle, RGN_AND);
  else
    region_ = regionOf(rectangle);
}

void Region::Exclude(Rectangle const & rectangle) {
  if (region_)
    combine(rectangle, RGN_DIFF);
}

void Region::combine(Rectangle const & rectangle, int mode) {
  std::shared_ptr<HRGN__> const other = regionOf(rectangle);
  std::shared_ptr<HRGN__> const result = regionOf(Rectangle());
  if (other && result && CombineRgn(result.get(), region_.get(), other.get(), mode) != ERROR)
    region_ = result;
}

} // namespace SV
