#pragma once
/// \file
/// Region: where a device may be drawn on.

#include "sv/export.hpp"
#include "sv/geometry.hpp"

#include <memory>

struct HRGN__;
typedef struct HRGN__ * HRGN;

namespace SV {

/// A part of a device, in its pixels whatever its map mode. Copies share it; a change leaves the others as they are. All
/// operations that the system refuses leave the region as it was.
class SV_API Region {
public:
  /// All of any device: no limit.
  Region() = default;

  /// An empty rectangle gives a region without a pixel.
  explicit Region(Rectangle const & rectangle);

  bool IsUnlimited() const { return !region_; } ///< as made without a rectangle
  bool IsEmpty() const;                         ///< without a pixel
  Rectangle GetBoundRect() const;               ///< the smallest rectangle around it; empty for one without limit

  void Union(Rectangle const & rectangle);     ///< adds it; nothing happens to a region without limit
  void Intersect(Rectangle const & rectangle); ///< keeps what lies in both
  void Exclude(Rectangle const & rectangle);   ///< takes it out; nothing happens to a region without limit

  /// Null for one without limit; it stays owned here.
  HRGN GethRgn() const { return region_.get(); }

private:
  void combine(Rectangle const & rectangle, int mode);

  std::shared_ptr<HRGN__> region_;
};

} // namespace SV
