#pragma once
/// \file
/// MapMode: what the numbers given to a device count.

namespace SV {

enum MapUnit : unsigned short {
  MAP_PIXEL = 0,
  MAP_10TH_MM = 1, ///< tenths of a millimetre, by the resolution that the device reports
  /// Units of dialogs: a quarter of the width and an eighth of the height of a character in the application's font.
  MAP_APPFONT = 12
};

/// The unit in which a device counts; from the upper left corner, to the right and down. Any other number counts pixels.
class MapMode {
public:
  MapMode() = default; ///< pixels
  MapMode(MapUnit unit) : unit_(unit) {}

  MapUnit GetMapUnit() const { return unit_; }

private:
  MapUnit unit_ = MAP_PIXEL;
};

inline bool operator==(MapMode const & a, MapMode const & b) { return a.GetMapUnit() == b.GetMapUnit(); }

} // namespace SV
