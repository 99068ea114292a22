#pragma once
/// \file
/// Bitmap: a picture of the system.

#include "sv/export.hpp"
#include "sv/geometry.hpp"
#include "sv/resource.hpp"

#include <memory>

namespace SV {

/// Owner of a system bitmap. Copies share it, Clone makes one of its own; the last owner deletes it. Sizes are in
/// pixels.
class SV_API Bitmap {
public:
  /// The empty bitmap, of size 0 by 0.
  Bitmap();

  /// A black picture of 32 bits a pixel; empty when a side is below 1. When the system refuses it,
  /// Application::Exception is called with EXC_SYSTEM_OBJECT_NOT_CREATED and the system's error; if that returns, the
  /// bitmap is empty.
  explicit Bitmap(Size const & size);

  /// From a resource; empty when no manager has it, see Resource::LoadString for the order.
  explicit Bitmap(ResId const & id);

  /// Takes over a system bitmap; null gives the empty bitmap.
  explicit Bitmap(HBITMAP bitmap);

  bool IsEmpty() const { return !bitmap_; } ///< of size 0 by 0
  Size const & GetSizePixel() const { return size_; }

  /// Null for the empty bitmap; it stays owned here.
  HBITMAP GethBitmap() const { return bitmap_.get(); }

  /// A picture of the same pixels that shares nothing; of the empty bitmap the empty one.
  Bitmap Clone() const;

private:
  std::shared_ptr<HBITMAP__> bitmap_;
  Size size_;
};

} // namespace SV
