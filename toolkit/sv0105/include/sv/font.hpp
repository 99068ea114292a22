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

/// How heavy a face is; any other number counts as WEIGHT_NORMAL.
enum FontWeight : unsigned short { WEIGHT_DONTKNOW = 0, WEIGHT_LIGHT = 1, WEIGHT_NORMAL = 2, WEIGHT_BOLD = 3 };

/// Whether all characters are equally wide, which helps the system to find a face in place of one that it does not have.
/// Any other number counts as PITCH_DONTKNOW.
enum FontPitch : unsigned short { PITCH_DONTKNOW = 0, PITCH_FIXED = 1, PITCH_VARIABLE = 2 };

/// A font by its properties. It becomes a system font where it is drawn with. Each Change gives the former value.
class Font {
public:
  /// The system's default face and size, in the window colours, with an opaque background.
  SV_API Font();
  /// \param name  the face; the system compares its first 31 characters
  /// \param size  width and height in the units of the device that draws, pixels at first; width 0 is the face's own. The
  ///              height is that of the characters, without the room that the face leaves above them
  SV_API Font(String const & name, Size const & size);

  String const & GetName() const { return name_; } ///< the face
  Size const & GetSize() const { return size_; }
  CharSet GetCharSet() const { return charSet_; }
  FontWeight GetWeight() const { return weight_; }
  FontPitch GetPitch() const { return pitch_; }
  Color const & GetColor() const { return color_; }
  Color const & GetFillColor() const { return fillColor_; }
  bool IsTransparent() const { return transparent_; }

  SV_API String ChangeName(String const & name); ///< each gives the former value
  SV_API Size ChangeSize(Size const & size);
  SV_API CharSet ChangeCharSet(CharSet charSet);
  SV_API FontWeight ChangeWeight(FontWeight weight);
  SV_API FontPitch ChangePitch(FontPitch pitch);
  SV_API Color ChangeColor(Color const & color);
  SV_API Color ChangeFillColor(Color const & color);
  SV_API bool ChangeTransparent(bool transparent);

  /// A system font with these properties, its size in pixels; the caller deletes it. Null when the system refuses.
  SV_API HFONT CreateSystemFont() const;

private:
  String name_;
  Size size_;
  CharSet charSet_ = 1;
  FontWeight weight_ = WEIGHT_NORMAL;
  FontPitch pitch_ = PITCH_DONTKNOW;
  Color color_;
  Color fillColor_;
  bool transparent_ = false;
};

} // namespace SV
