#pragma once
/// \file
/// Colours: names, texts, RGB and HSV values, and the arithmetic for themes.
///
/// A colour text is the lower-case name of a colour ("steelblue"), '#' or '$' with six hexadecimal digits RRGGBB
/// ("#ff8000"), or the decimal number of 0xRRGGBB ("16744448"). The names are those of CSS in their American spelling,
/// and "lightmagenta"; "gray" and "khaki" have other values than in CSS. A packed colour is 0x00BBGGRR; a
/// channel of an SV::Color has 16 bits, with its 8-bit value in the high byte.
///
/// \code
///   SV::Color const edge = mulColor(getColorOfColorName("steelblue"), 0.8);
///   SV::Color const tint = srcOver(SV::COL_WHITE, edge, 0.25); // three quarters white
/// \endcode
///
/// There is no state: any thread may call. Pointers must not be null.

#include "export.hpp"
#include "sv/color.hpp"
#include "tools/string.hpp"

struct tagRGBQUAD;

/// \name Texts
/// @{

/// Six hexadecimal digits in upper or lower case as red, green and blue. Any other character counts as 0 in its place, and
/// so does a missing digit at the end; a seventh is ignored. Null counts as the empty string.
KIV_API void getRGBValuesFromColorString(char const * text, unsigned char & red, unsigned char & green,
                                         unsigned char & blue);

/// The values of a colour text; an unknown name gives black.
/// \return true when it is one of the names, false for digits, numbers and unknown names
KIV_API bool getRGBValuesOfColorName(SV::String const & name, unsigned char & red, unsigned char & green,
                                     unsigned char & blue);

/// The user colour of a colour text; an unknown name gives black.
KIV_API SV::Color getColorOfColorName(SV::String const & name);

/// The name of the colour, otherwise its text with '$', so that the functions above can read it. Only the 8-bit values are
/// used. Of several names, the result is the first in alphabetical order: "aqua" for "cyan", "fuchsia" for "magenta".
KIV_API SV::String getLeoTextOfColor(SV::Color const & color);
/// @}

/// \name Hue, saturation and value
/// Red, green, blue, saturation and value are from 0 to 1, the hue is in degrees from 0 to below 360.
/// @{

/// Grays have hue 0 and saturation 0. A red with a minimal share of blue is rounded to a hue of 360; colours with 8-bit
/// channels are never that close to red.
KIV_API void RGBtoHSV(float r, float g, float b, float * h, float * s, float * v);

/// Without saturation the hue is ignored. A hue below 0, or of 360 and above, is not wrapped: it counts as one in the last
/// sixth, so 360 is magenta, as 300 is.
KIV_API void HSVtoRGB(float * r, float * g, float * b, float h, float s, float v);

/// As getRGBValuesOfColorName.
KIV_API bool getHSVValuesFromColorName(SV::String const & name, float & h, float & s, float & v);

/// The three as bytes 0x00HHSSVV, in which 360 degrees are 255; each is truncated, not rounded.
KIV_API unsigned long hsvAsULONGValue(float h, float s, float v);
/// @}

/// \name Arithmetic
/// Results are user colours; channels are computed with 16 bits and truncated, not rounded.
/// @{

/// Each channel multiplied, at most 0xFFFF. A negative product counts as too large.
KIV_API SV::Color mulColor(SV::Color const & color, double factor);

/// \p src laid over \p dest.
/// \param alpha  0 gives \p dest, 1 gives \p src. Values outside this range are not clamped: channels then lose their
///               upper bits
KIV_API SV::Color srcOver(SV::Color const & dest, SV::Color const & src, double alpha);

/// The brightness of a packed colour, 0 to 254: 0.3 of red, 0.59 of green and 0.11 of blue, each truncated separately, so white
/// has 254.
KIV_API int grayValue(unsigned long packed);

/// Replaces the colour by the gray of that brightness; the reserved byte of a quad is unchanged.
/// @{
KIV_API void toGray(SV::Color & color);
KIV_API void toGray(tagRGBQUAD & color);
/// @}

/// A fill for selected items: the mixture of white and a system colour whose gray value is nearest to that of \p color
/// less 25.
/// \param system  true: the system's highlight colour is mixed in, otherwise its face colour
KIV_API SV::Color getSelectFillInColor(SV::Color const & color, bool system);
/// @}
