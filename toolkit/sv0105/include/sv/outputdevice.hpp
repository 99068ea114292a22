#pragma once
/// \file
/// OutputDevice: drawing, on windows, in memory, on paper.

#include "sv/bitmap.hpp"
#include "sv/export.hpp"
#include "sv/font.hpp"
#include "sv/geometry.hpp"
#include "sv/image.hpp"
#include "sv/mapmode.hpp"
#include "sv/pen.hpp"
#include "sv/region.hpp"
#include "tools/object.hpp"
#include "tools/string.hpp"

#include <memory>

namespace SV {

namespace detail {
class DeviceData;
class Painting;
} // namespace detail

/// What is drawn on: a Window, a VirtualDevice, or any device context of the system. Main thread.
///
/// It begins with a black pen, no brush, the default font, no limit, and pixels as its unit. All positions and sizes are in
/// the unit of its map mode, except where a name ends in Pixel and in regions. A rectangle's edges belong to it; one that is
/// empty or inverted draws nothing. What lies farther than 67,108,863 pixels from the corner is drawn up to there.
///
/// A Window has a device context while its Paint runs. At other times each operation has one for the client area, and gives
/// it back; a DrawingScope keeps it for several. A device without a context draws nothing, and measures as the screen does.
///
/// \code
///   void Paint(SV::OutputDevice & device, SV::Rectangle const &) override {
///     device.ChangePen(SV::Pen());
///     device.ChangeFillInBrush(SV::Brush(SV::COL_FACE));
///     device.DrawRect({{0, 0}, device.GetOutputSize()});
///   }
/// \endcode
class SV_API OutputDevice : public LinkHdl {
public:
  /// The context stays its owner's. It gets its former pen, brush, font, clipping region and modes back when this object
  /// dies, which must be before the owner gives it back. The device draws inside of the clipping region it finds.
  explicit OutputDevice(HDC context);
  OutputDevice(OutputDevice const &) = delete;
  OutputDevice & operator=(OutputDevice const &) = delete;
  ~OutputDevice() override;

  /// For drawing with the system's functions, in pixels, inside the clipping region; null for a device that has none at
  /// this moment. Whoever selects something puts the former back. Pen, brush and font of the device are selected only
  /// when it draws.
  HDC GethDC() const { return context_; }

  /// The client area of a window, the bitmap of a memory device, or the page.
  virtual Size GetOutputSizePixel() const;
  Size GetOutputSize() const; ///< the same in the unit of the map mode

  /// Each change gives the former one. Pen widths and font sizes are in the unit of the map mode, at least one pixel wide.
  Pen ChangePen(Pen const & pen);
  Brush ChangeFillInBrush(Brush const & brush);
  Font ChangeFont(Font const & font);

  /// What Erase fills all of the device with: white at first; none leaves it as it is. The change gives the former one.
  virtual Brush const & GetBackgroundBrush() const;
  virtual Brush ChangeBackgroundBrush(Brush const & brush);
  void Erase();

  /// Nothing is drawn outside of the region, with GethDC neither. The change gives the former one.
  Region ChangeClipRegion(Region const & region);

  MapMode const & GetMapMode() const;
  MapMode ChangeMapMode(MapMode const & mode); ///< gives the former one; it moves nothing that has been drawn

  /// Keeps pen, brushes, font, region and map mode; Pop puts them back, those of the last Push first, and does nothing
  /// without a Push.
  void Push();
  void Pop();

  /// \name From units to pixels and back
  /// Rounded to the nearest, halves away from 0. A rectangle's width is that between its rounded edges, so that rectangles
  /// side by side stay so. Without a mode it is that of the device.
  /// @{
  Point LogicToPixel(Point const & point) const;
  Size LogicToPixel(Size const & size) const;
  Rectangle LogicToPixel(Rectangle const & rectangle) const;
  Point LogicToPixel(Point const & point, MapMode const & mode) const;
  Size LogicToPixel(Size const & size, MapMode const & mode) const;
  Rectangle LogicToPixel(Rectangle const & rectangle, MapMode const & mode) const;
  Point PixelToLogic(Point const & point) const;
  Size PixelToLogic(Size const & size) const;
  Rectangle PixelToLogic(Rectangle const & rectangle) const;
  Point PixelToLogic(Point const & point, MapMode const & mode) const;
  Size PixelToLogic(Size const & size, MapMode const & mode) const;
  Rectangle PixelToLogic(Rectangle const & rectangle, MapMode const & mode) const;
  /// @}

  /// Both ends belong to the line.
  void DrawLine(Point const & from, Point const & to);

  /// An area with the brush, and its edge, which belongs to it, with the pen.
  void DrawRect(Rectangle const & rectangle);

  /// One line of text in font and colours of the font; \p position is the upper left corner. Characters beyond the
  /// right edge of the device are left out, so that a text of any length takes no longer than what is seen of it.
  void DrawText(Point const & position, String const & text);
  /// As high as the font, also for the empty text.
  Size GetTextSize(String const & text) const;

  /// Pixel by pixel from the upper left corner, whatever the map mode; or stretched to an area, from the nearest pixels.
  void DrawBitmap(Point const & position, Bitmap const & bitmap);
  void DrawBitmap(Rectangle const & area, Bitmap const & bitmap);

  /// The same without the pixels of exactly that colour. In a system of fewer colours, see GetSolidColor.
  void DrawTransparentBitmap(Point const & position, Bitmap const & bitmap, Color const & transparent);
  void DrawTransparentBitmap(Rectangle const & area, Bitmap const & bitmap, Color const & transparent);

  /// The same by the mask mode of the image.
  void DrawImage(Point const & position, Image const & image);
  void DrawImage(Rectangle const & area, Image const & image);

  /// Copies from another device, or within this one; stretched where the sizes differ. Each device counts in its own unit.
  /// What is not visible of a window cannot be copied.
  void DrawOutDev(Point const & to, Size const & toSize, Point const & from, Size const & fromSize,
                  OutputDevice const & source);

  /// Fills an area with all colours from one to the other.
  /// \param vertical  true: the first colour is at the top; false: at the left
  void GradientFill(bool vertical, Rectangle const & area, Color const & first, Color const & last);

  /// The colour that the device shows for it.
  Color GetSolidColor(Color const & color) const;

protected:
  OutputDevice(); ///< for devices that have a context only at times: see fetchContext

  /// A context to draw with for a moment; the base has none. Null when there is none; otherwise releaseContext follows.
  virtual HDC fetchContext() const;
  virtual void releaseContext(HDC context) const;

  /// For devices whose context comes and goes: it begins with the present pen, brush and so on. Before a context dies, it is
  /// closed; the destructor does so for the one that is still open.
  void openContext(HDC context) const;
  void closeContext() const;

private:
  friend class DrawingScope;
  friend class detail::Painting;

  long penWidth() const;
  void usePen() const;
  void useFont() const;
  void drawLine(Point const & fromPixel, Point const & toPixel);
  Rectangle placeOf(Point const & position, Bitmap const & bitmap) const;
  void drawPicture(Rectangle const & pixels, Bitmap const & bitmap, ImageMask mask, Color const & color);

  mutable HDC context_ = nullptr;
  std::unique_ptr<detail::DeviceData> data_;
};

/// Keeps the device context of a device that has one only at times, so that several operations share it, and so that GethDC
/// gives it. The device must outlive the scope, and scopes end in the reverse order of their beginning.
///
/// \code
///   SV::DrawingScope const scope(window);
///   BitBlt(window.GethDC(), ...);
/// \endcode
class SV_API DrawingScope {
public:
  explicit DrawingScope(OutputDevice const & device) : device_(device) {
    if (!device.context_)
      fetch();
  }
  DrawingScope(DrawingScope const &) = delete;
  DrawingScope & operator=(DrawingScope const &) = delete;
  ~DrawingScope() {
    if (fetched_)
      release();
  }

private:
  void fetch();
  void release();

  OutputDevice const & device_;
  HDC fetched_ = nullptr;
};

} // namespace SV
