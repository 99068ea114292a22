#pragma once
/// \file
/// Color: a colour by its number or by its three channels.

#include "sv/export.hpp"

namespace SV {

/// The numbered colours: 0 to 15 are fixed, 20 to 27 follow the system. Any other number below COL_USER is black.
enum ColorName : unsigned short {
  COL_BLACK = 0,
  COL_BLUE = 1,
  COL_GREEN = 2,
  COL_CYAN = 3,
  COL_RED = 4,
  COL_MAGENTA = 5,
  COL_BROWN = 6,
  COL_GRAY = 7,
  COL_LIGHTGRAY = 8,
  COL_LIGHTBLUE = 9,
  COL_LIGHTGREEN = 10,
  COL_LIGHTCYAN = 11,
  COL_LIGHTRED = 12,
  COL_LIGHTMAGENTA = 13,
  COL_YELLOW = 14,
  COL_WHITE = 15,
  COL_WINDOWTEXT = 20,
  COL_WINDOW = 21,
  COL_HIGHLIGHT = 22,
  COL_HIGHLIGHTTEXT = 23,
  COL_BUTTONTEXT = 24,
  COL_FACE = 25,   ///< of buttons, boxes and bars
  COL_LIGHT = 26,  ///< their lit edges
  COL_SHADOW = 27, ///< their edges in shadow
  COL_USER = 0x20
};

/// A colour name number, or the user colour number with three 16-bit channels whose 8-bit value lies in the high byte.
class Color {
public:
  /// Black.
  Color() = default;
  Color(ColorName name) : name_(name) {}
  /// A user colour; channels are 16 bits, 0xFF00 for 255.
  Color(unsigned short red, unsigned short green, unsigned short blue)
      : name_(COL_USER), red_(red), green_(green), blue_(blue) {}

  ColorName GetColorName() const { return name_; } ///< its number, COL_USER for a colour by channels

  /// The channels, 16 bits; for a numbered colour those of the table or of the system at this moment.
  SV_API unsigned short GetRed() const;
  SV_API unsigned short GetGreen() const;
  SV_API unsigned short GetBlue() const;

  /// 0x00BBGGRR.
  SV_API unsigned long GetRGB() const;
  /// Makes it the user colour of 0x00BBGGRR; the highest byte is ignored.
  SV_API void SetRGB(unsigned long packed);

private:
  ColorName name_ = COL_BLACK;
  unsigned short red_ = 0;
  unsigned short green_ = 0;
  unsigned short blue_ = 0;
};

} // namespace SV
