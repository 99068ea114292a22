#include "sv/outputdevice.hpp"

#include "handles/handle.hpp"
#include "tools/winapi.hpp"

#include <utility>

namespace SV {

namespace {

/// Selects \p made, or \p instead of it when there is none, and deletes the former one.
template <class Handle> void select(HDC context, Handle & current, Handle made, HGDIOBJ instead) {
  SelectObject(context, made ? static_cast<HGDIOBJ>(made) : instead);
  if (Handle const former = std::exchange(current, made))
    DeleteObject(former);
}

/// A memory device with a bitmap in it.
class BitmapDevice {
public:
  BitmapDevice(HDC like, HBITMAP bitmap)
      : context_(CreateCompatibleDC(like)), former_(SelectObject(context_.get(), bitmap)) {}
  BitmapDevice(BitmapDevice const &) = delete;
  BitmapDevice & operator=(BitmapDevice const &) = delete;
  ~BitmapDevice() { SelectObject(context_.get(), former_); }

  HDC context() const { return context_.get(); }

private:
  handles::MemoryDevice context_;
  HGDIOBJ former_;
};

} // namespace

OutputDevice::OutputDevice(HDC context) : context_(context), savedState_(SaveDC(context)) {
  ChangePen(Pen(COL_BLACK));
  ChangeFillInBrush(Brush());
  ChangeFont(Font());
}

OutputDevice::~OutputDevice() {
  RestoreDC(context_, savedState_);
  if (systemPen_)
    DeleteObject(systemPen_);
  if (systemBrush_)
    DeleteObject(systemBrush_);
  if (systemFont_)
    DeleteObject(systemFont_);
}

Size OutputDevice::GetOutputSizePixel() const {
  RECT area;
  if (HWND const window = WindowFromDC(context_); window && GetClientRect(window, &area))
    return {area.right, area.bottom};
  BITMAP bitmap;
  if (HGDIOBJ const object = GetCurrentObject(context_, OBJ_BITMAP);
      object && GetObjectA(object, sizeof bitmap, &bitmap))
    return {bitmap.bmWidth, bitmap.bmHeight};
  return {GetDeviceCaps(context_, HORZRES), GetDeviceCaps(context_, VERTRES)};
}

Pen OutputDevice::ChangePen(Pen const & pen) {
  HPEN const made = pen.IsNone() ? nullptr : CreatePen(PS_SOLID, pen.GetWidth(), pen.GetColor().GetRGB());
  select(context_, systemPen_, made, GetStockObject(NULL_PEN));
  return std::exchange(pen_, Pen(pen));
}

Brush OutputDevice::ChangeFillInBrush(Brush const & brush) {
  HBRUSH const made = brush.IsNone() ? nullptr : CreateSolidBrush(brush.GetColor().GetRGB());
  select(context_, systemBrush_, made, GetStockObject(NULL_BRUSH));
  return std::exchange(brush_, Brush(brush));
}

Font OutputDevice::ChangeFont(Font const & font) {
  select(context_, systemFont_, font.CreateSystemFont(), GetStockObject(SYSTEM_FONT));
  SetTextColor(context_, font.GetColor().GetRGB());
  SetBkColor(context_, font.GetFillColor().GetRGB());
  SetBkMode(context_, font.IsTransparent() ? TRANSPARENT : OPAQUE);
  return std::exchange(font_, Font(font));
}

void OutputDevice::DrawLine(Point const & from, Point const & to) {
  if (pen_.IsNone())
    return;
  MoveToEx(context_, from.x, from.y, nullptr);
  LineTo(context_, to.x, to.y);
  // The system leaves out the last point.
  SetPixelV(context_, to.x, to.y, pen_.GetColor().GetRGB());
}

void OutputDevice::DrawRect(Rectangle const & rectangle) {
  Point const & start = rectangle.TopLeft();
  Size const & size = rectangle.GetSize();
  if (size.width < 1 || size.height < 1)
    return;
  // Without a pen the system leaves its place free at the right and at the bottom.
  int const missing = pen_.IsNone() ? 1 : 0;
  ::Rectangle(context_, start.x, start.y, start.x + size.width + missing, start.y + size.height + missing);
}

void OutputDevice::DrawText(Point const & position, String const & text) {
  TextOutA(context_, position.x, position.y, text.c_str(), text.Len());
}

Size OutputDevice::GetTextSize(String const & text) const {
  SIZE size = {};
  GetTextExtentPoint32A(context_, text.c_str(), text.Len(), &size);
  return {size.cx, size.cy};
}

void OutputDevice::DrawBitmap(Point const & position, Bitmap const & bitmap) {
  DrawBitmap({position, bitmap.GetSizePixel()}, bitmap);
}

void OutputDevice::DrawBitmap(Rectangle const & area, Bitmap const & bitmap) {
  if (bitmap.IsEmpty())
    return;
  BitmapDevice const source(context_, bitmap.GethBitmap());
  Size const from = bitmap.GetSizePixel();
  Size const & to = area.GetSize();
  SetStretchBltMode(context_, COLORONCOLOR);
  StretchBlt(context_, area.TopLeft().x, area.TopLeft().y, to.width, to.height, source.context(), 0, 0, from.width,
             from.height, SRCCOPY);
}

void OutputDevice::DrawImage(Point const & position, Image const & image) { DrawBitmap(position, image.GetBitmap()); }

} // namespace SV
