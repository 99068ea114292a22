#include "sv/font.hpp"

#include "tools/winapi.hpp"

#include <algorithm>
#include <climits>
#include <utility>

namespace SV {

namespace {

LONG clamped(long value) { return std::clamp(value, -static_cast<long>(SHRT_MAX), static_cast<long>(SHRT_MAX)); }

} // namespace

Font::Font() : color_(COL_WINDOWTEXT), fillColor_(COL_WINDOW) {}

Font::Font(String const & name, Size const & size)
    : name_(name), size_(size), color_(COL_WINDOWTEXT), fillColor_(COL_WINDOW) {}

String Font::ChangeName(String const & name) { return std::exchange(name_, String(name)); }

Size Font::ChangeSize(Size const & size) { return std::exchange(size_, size); }

CharSet Font::ChangeCharSet(CharSet charSet) { return std::exchange(charSet_, charSet); }

Color Font::ChangeColor(Color const & color) { return std::exchange(color_, color); }

Color Font::ChangeFillColor(Color const & color) { return std::exchange(fillColor_, color); }

bool Font::ChangeTransparent(bool transparent) { return std::exchange(transparent_, transparent); }

HFONT Font::CreateSystemFont() const {
  LOGFONTA description = {};
  // A negative height is that of the characters, a positive one would include the room above them.
  description.lfHeight = -clamped(size_.height);
  description.lfWidth = clamped(size_.width);
  description.lfWeight = FW_NORMAL;
  description.lfCharSet = static_cast<BYTE>(charSet_ <= 255 ? charSet_ : DEFAULT_CHARSET);
  int const length = std::min(name_.Len(), LF_FACESIZE - 1);
  std::copy_n(name_.c_str(), length, description.lfFaceName);
  return CreateFontIndirectA(&description);
}

} // namespace SV
