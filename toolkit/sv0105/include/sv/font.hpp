#pragma once
/// \file
/// Font: the face, size and colours of a text.

#include "sv/color.hpp"
#include "sv/export.hpp"
#include "sv/geometry.hpp"
#include "tools/string.hpp"

namespace SV {

/// The system's number of a character set: 0 Western, 1 the default, 238 Central European, 204 Cyrillic and so on.
using CharSet = unsigned short;

/// A font by its properties. It becomes a system font where it is drawn with. Each Change gives the former value.
class Font {
public:
  /// The system's default face and size, in the window colours, with an opaque background.
  SV_API Font();
  /// \param name  the face; the system compares its first 31 characters
  /// \param size  width and height in pixels; width 0 is the face's own. The height is that of the characters, without
  ///              the room that the face leaves above them
  SV_API Font(String const & name, Size const & size);

  String const & GetName() const { return name_; } ///< the face
  Size const & GetSize() const { return size_; }
  CharSet GetCharSet() const { return charSet_; }
  Color const & GetColor() const { return color_; }
  Color const & GetFillColor() const { return fillColor_; }
  bool IsTransparent() const { return transparent_; }

  SV_API String ChangeName(String const & name); ///< each gives the former value
  SV_API Size ChangeSize(Size const & size);
  SV_API CharSet ChangeCharSet(CharSet charSet);
  SV_API Color ChangeColor(Color const & color);
  SV_API Color ChangeFillColor(Color const & color);
  SV_API bool ChangeTransparent(bool transparent);

  /// A system font with these properties; the caller deletes it. Null when the system refuses.
  SV_API HFONT CreateSystemFont() const;

private:
  String name_;
  Size size_;
  CharSet charSet_ = 1;
  Color color_;
  Color fillColor_;
  bool transparent_ = false;
};

} // namespace SV
