#include "sv/color.hpp"

#include "tools/winapi.hpp"

#include <array>

namespace SV {

namespace {

constexpr std::array<unsigned long, 16> kFixedColors = {0x000000, 0x800000, 0x008000, 0x808000, 0x000080, 0x800080,
                                                        0x008080, 0x808080, 0xC0C0C0, 0xFF0000, 0x00FF00, 0xFFFF00,
                                                        0x0000FF, 0xFF00FF, 0x00FFFF, 0xFFFFFF};

constexpr std::array<int, 8> kSystemColors = {COLOR_WINDOWTEXT, COLOR_WINDOW,  COLOR_HIGHLIGHT,    COLOR_HIGHLIGHTTEXT,
                                              COLOR_BTNTEXT,    COLOR_BTNFACE, COLOR_BTNHIGHLIGHT, COLOR_BTNSHADOW};

unsigned long packedOf(ColorName name) {
  if (name < kFixedColors.size())
    return kFixedColors[name];
  if (name >= COL_WINDOWTEXT && name <= COL_SHADOW)
    return GetSysColor(kSystemColors[static_cast<std::size_t>(name - COL_WINDOWTEXT)]);
  return 0;
}

// The 8-bit value lies in the high byte of a channel.
constexpr unsigned short channel(unsigned long packed, int shift) {
  return static_cast<unsigned short>(((packed >> shift) & 0xFF) << 8);
}

} // namespace

unsigned short Color::GetRed() const { return name_ == COL_USER ? red_ : channel(packedOf(name_), 0); }

unsigned short Color::GetGreen() const { return name_ == COL_USER ? green_ : channel(packedOf(name_), 8); }

unsigned short Color::GetBlue() const { return name_ == COL_USER ? blue_ : channel(packedOf(name_), 16); }

unsigned long Color::GetRGB() const {
  if (name_ != COL_USER)
    return packedOf(name_);
  return static_cast<unsigned long>(red_ >> 8) | static_cast<unsigned long>(green_ >> 8) << 8 |
         static_cast<unsigned long>(blue_ >> 8) << 16;
}

void Color::SetRGB(unsigned long packed) { *this = Color(channel(packed, 0), channel(packed, 8), channel(packed, 16)); }

} // namespace SV
