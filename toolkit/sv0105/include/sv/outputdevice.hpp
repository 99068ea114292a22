#pragma once
/// \file
/// OutputDevice: drawing.

#include "sv/bitmap.hpp"
#include "sv/export.hpp"
#include "sv/font.hpp"
#include "sv/geometry.hpp"
#include "sv/image.hpp"
#include "sv/pen.hpp"
#include "tools/object.hpp"
#include "tools/string.hpp"

namespace SV {

/// Draws on a device context of the system, in its pixels. It begins with a black pen, no brush and the default font.
class SV_API OutputDevice : public LinkHdl {
public:
  /// The context stays its owner's. It gets its former pen, brush, font and modes back when this object dies, which
  /// must be before the owner gives it back.
  explicit OutputDevice(HDC context);
  OutputDevice(OutputDevice const &) = delete;
  OutputDevice & operator=(OutputDevice const &) = delete;
  ~OutputDevice() override;

  HDC GethDC() const { return context_; } ///< owned by who made it

  /// The client area of a window, the bitmap of a memory device, or the page.
  Size GetOutputSizePixel() const;

  /// Each change gives the former one.
  Pen ChangePen(Pen const & pen);
  Brush ChangeFillInBrush(Brush const & brush);
  Font ChangeFont(Font const & font);

  /// Both ends belong to the line.
  void DrawLine(Point const & from, Point const & to);

  /// An area with the brush, and its edge, which belongs to it, with the pen.
  void DrawRect(Rectangle const & rectangle);

  /// One line of text in font and colours of the font; \p position is the upper left corner.
  void DrawText(Point const & position, String const & text);
  Size GetTextSize(String const & text) const;

  void DrawBitmap(Point const & position, Bitmap const & bitmap); ///< pixel by pixel, from its upper left corner
  /// Stretched to \p area.
  void DrawBitmap(Rectangle const & area, Bitmap const & bitmap);
  void DrawImage(Point const & position, Image const & image);

private:
  HDC context_;
  int savedState_;
  HPEN systemPen_ = nullptr;
  HBRUSH systemBrush_ = nullptr;
  HFONT systemFont_ = nullptr;
  Pen pen_;
  Brush brush_;
  Font font_;
};

} // namespace SV
