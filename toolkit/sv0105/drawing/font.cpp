#include "sv/font.hpp"

#include "tools/winapi.hpp"

#include <algorithm>
#include <climits>
#include <utility>

namespace SV {

namespace {

LONG systemWeight(FontWeight weight) {
  switch (weight) {
  case WEIGHT_DONTKNOW: return FW_DONTCARE;
  case WEIGHT_LIGHT: return FW_LIGHT;
  case WEIGHT_BOLD: return FW_BOLD;
  default: return FW_NORMAL;
  }
}

BYTE systemPitch(FontPitch pitch) {
  switch (pitch) {
  case PITCH_FIXED: return FIXED_PITCH | FF_MODERN;
  case PITCH_VARIABLE: return VARIABLE_PITCH | FF_DONTCARE;
  default: return DEFAULT_PITCH | FF_DONTCARE;
  }
}

LONG clamped(long value) { return std::clamp(value, -static_cast<long>(SHRT_MAX), static_cast<long>(SHRT_MAX)); }

} // namespace

Font::Font() : color_(COL_WINDOWTEXT), fillColor_(COL_WINDOW) {}

Font::Font(String const & name, Size const & size)
    : name_(name), size_(size), color_(COL_WINDOWTEXT), fillColor_(COL_WINDOW) {}

String Font::ChangeName(String const & name) { return std::exchange(name_, String(name)); }

Size Font::ChangeSize(Size const & size) { return std::exchange(size_, size); }

CharSet Font::ChangeCharSet(CharSet charSet) { return std::exchange(charSet_, charSet); }

FontWeight Font::ChangeWeight(FontWeight weight) { return std::exchange(weight_, weight); }

FontPitch Font::ChangePitch(FontPitch pitch) { return std::exchange(pitch_, pitch); }

Color Font::ChangeColor(Color const & color) { return std::exchange(color_, color); }

Color Font::ChangeFillColor(Color const & color) { return std::exchange(fillColor_, color); }

bool Font::ChangeTransparent(bool transparent) { return std::exchange(transparent_, transparent); }

HFONT Font::CreateSystemFont() const {
  LOGFONTA description = {};
  // A negative height is that of the characters, a positive one would include the room above them.
  description.lfHeight = -clamped(size_.height);
  description.lfWidth = clamped(size_.width);
  description.lfWeight = systemWeight(weight_);
  description.lfPitchAndFamily = systemPitch(pitch_);
  description.lfCharSet = static_cast<BYTE>(charSet_ <= 255 ? charSet_ : DEFAULT_CHARSET);
  int const length = std::min(name_.Len(), LF_FACESIZE - 1);
  std::copy_n(name_.c_str(), length, description.lfFaceName);
  return CreateFontIndirectA(&description);
}

} // namespace SV
