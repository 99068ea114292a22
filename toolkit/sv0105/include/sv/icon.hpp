#pragma once
/// \file
/// Icon: a small picture of the system, with transparent parts.

#include "sv/export.hpp"
#include "sv/geometry.hpp"
#include "sv/resource.hpp"

#include <memory>

struct HICON__;
typedef struct HICON__ * HICON;

namespace SV {

/// The icons that the system has for messages.
enum IconStyle : unsigned short {
  ICON_STYLE_NONE = 0,
  ICON_STYLE_INFO = 1,
  ICON_STYLE_QUERY = 2,
  ICON_STYLE_ERROR = 3,
  ICON_STYLE_WARNING = 4
};

/// Owner of a system icon. Copies share it; the last owner deletes it. Sizes are in pixels.
class SV_API Icon {
public:
  /// None, of size 0 by 0.
  Icon();

  /// An icon resource, in the size that comes next to the system's; none when no manager has it, see
  /// Resource::LoadString for the order.
  explicit Icon(ResId const & id);

  /// One of the system's; none for ICON_STYLE_NONE and for any other number.
  explicit Icon(IconStyle style);

  /// Takes over a system icon; null gives none.
  explicit Icon(HICON icon);

  bool IsEmpty() const { return !icon_; } ///< of size 0 by 0
  Size GetSizePixel() const;

  /// Null for none; it stays owned here.
  HICON GethIcon() const { return icon_.get(); }

private:
  std::shared_ptr<HICON__> icon_;
};

} // namespace SV
