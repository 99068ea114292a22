#include "drawing/bitmappixels.hpp"

#include "handles/handle.hpp"
#include "tools/winapi.hpp"

namespace SV::detail {

BitmapPixels::BitmapPixels(Size const & size) : bitmap_(size), width_(static_cast<std::size_t>(size.width)) {
  DIBSECTION section = {};
  if (bitmap_.IsEmpty() || !GetObjectA(bitmap_.GethBitmap(), sizeof section, &section))
    return;
  lines_ = static_cast<std::size_t>(section.dsBm.bmHeight);
  pixels_ = static_cast<std::uint32_t *>(section.dsBm.bmBits);
}

BitmapPixels pixelsOf(Bitmap const & bitmap) {
  BitmapPixels copy(bitmap.GetSizePixel());
  if (!copy)
    return copy;
  BITMAPINFO layout = {};
  Size const size = bitmap.GetSizePixel();
  layout.bmiHeader = {sizeof(BITMAPINFOHEADER), size.width, size.height, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
  handles::ScreenDevice const screen(GetDC(nullptr));
  int const lines = GetDIBits(screen.get(), bitmap.GethBitmap(), 0, static_cast<UINT>(size.height),
                              copy.line(static_cast<std::size_t>(size.height) - 1), &layout, DIB_RGB_COLORS);
  return lines != 0 ? copy : BitmapPixels(Size());
}

} // namespace SV::detail
