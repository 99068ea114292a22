#include "sv/outputdevice.hpp"

#include "drawing/devicedata.hpp"
#include "drawing/limits.hpp"
#include "drawing/textpieces.hpp"
#include "handles/handle.hpp"

#include <algorithm>

namespace SV {

using detail::DeviceData;

OutputDevice::OutputDevice() : data_(std::make_unique<DeviceData>()) {}

OutputDevice::OutputDevice(HDC context) : OutputDevice() {
  if (context)
    openContext(context);
}

OutputDevice::~OutputDevice() = default;

HDC OutputDevice::fetchContext() const { return nullptr; }

void OutputDevice::releaseContext(HDC) const {}

void OutputDevice::openContext(HDC context) const {
  data_->open(context);
  context_ = context;
}

void OutputDevice::closeContext() const {
  context_ = nullptr;
  data_->close();
}

void DrawingScope::fetch() {
  fetched_ = device_.fetchContext();
  if (fetched_)
    device_.openContext(fetched_);
}

void DrawingScope::release() {
  device_.closeContext();
  device_.releaseContext(fetched_);
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

Size OutputDevice::GetOutputSize() const { return PixelToLogic(GetOutputSizePixel()); }

Pen OutputDevice::ChangePen(Pen const & pen) { return data_->changePen(pen); }

Brush OutputDevice::ChangeFillInBrush(Brush const & brush) { return data_->changeBrush(brush); }

Font OutputDevice::ChangeFont(Font const & font) { return data_->changeFont(font); }

Brush const & OutputDevice::GetBackgroundBrush() const { return data_->state().background; }

Brush OutputDevice::ChangeBackgroundBrush(Brush const & brush) { return data_->changeBackground(brush); }

void OutputDevice::Erase() {
  DrawingScope const scope(*this);
  Brush const & background = GetBackgroundBrush();
  if (!context_ || background.IsNone())
    return;
  Size const size = GetOutputSizePixel();
  Brush const former = data_->changeBrush(background);
  data_->useBrush();
  PatBlt(context_, 0, 0, size.width, size.height, PATCOPY);
  data_->changeBrush(former);
}

Region OutputDevice::ChangeClipRegion(Region const & region) { return data_->changeClip(region); }

MapMode const & OutputDevice::GetMapMode() const { return data_->state().mapMode; }

MapMode OutputDevice::ChangeMapMode(MapMode const & mode) { return data_->changeMapMode(mode); }

void OutputDevice::Push() { data_->push(); }

void OutputDevice::Pop() { data_->pop(); }

long OutputDevice::penWidth() const { return LogicToPixel(Size{data_->state().pen.GetWidth(), 0}).width; }

void OutputDevice::usePen() const { data_->usePen(penWidth()); }

void OutputDevice::useFont() const { data_->useFont(LogicToPixel(data_->state().font.GetSize())); }

void OutputDevice::DrawLine(Point const & from, Point const & to) {
  DrawingScope const scope(*this);
  if (!context_ || data_->state().pen.IsNone())
    return;
  drawLine(LogicToPixel(from), LogicToPixel(to));
}

void OutputDevice::drawLine(Point const & fromPixel, Point const & toPixel) {
  Point const start = detail::systemPoint(fromPixel);
  Point const end = detail::systemPoint(toPixel);
  if (start == end && penWidth() <= 1) {
    SetPixelV(context_, start.x, start.y, data_->state().pen.GetColor().GetRGB());
    return;
  }
  usePen();
  MoveToEx(context_, start.x, start.y, nullptr);
  // The system leaves out the last point. A line along an axis ends one later; others would take another way.
  if (start.y == end.y) {
    LineTo(context_, end.x + (end.x < start.x ? -1 : 1), end.y);
  } else if (start.x == end.x) {
    LineTo(context_, end.x, end.y + (end.y < start.y ? -1 : 1));
  } else {
    LineTo(context_, end.x, end.y);
    SetPixelV(context_, end.x, end.y, data_->state().pen.GetColor().GetRGB());
  }
}

void OutputDevice::DrawRect(Rectangle const & rectangle) {
  DrawingScope const scope(*this);
  Rectangle const pixels = LogicToPixel(rectangle);
  bool const hasPen = !data_->state().pen.IsNone();
  if (!context_ || pixels.IsEmpty() || (!hasPen && data_->state().brush.IsNone()))
    return;
  RECT const area = detail::systemArea(pixels);
  // Not every system draws the edge of a single pixel.
  if (hasPen && pixels.GetSize() == Size{1, 1}) {
    drawLine(pixels.TopLeft(), pixels.TopLeft());
    return;
  }
  data_->useBrush();
  if (!hasPen) {
    PatBlt(context_, area.left, area.top, area.right - area.left, area.bottom - area.top, PATCOPY);
    return;
  }
  usePen();
  ::Rectangle(context_, area.left, area.top, area.right, area.bottom);
}

void OutputDevice::DrawText(Point const & position, String const & text) {
  DrawingScope const scope(*this);
  if (!context_ || text.Len() < 1)
    return;
  useFont();
  Point const pixel = detail::systemPoint(LogicToPixel(position));
  detail::drawPieces(context_, pixel, text);
}

Size OutputDevice::GetTextSize(String const & text) const {
  DrawingScope const scope(*this);
  if (context_) {
    useFont();
    return PixelToLogic(detail::measurePieces(context_, text));
  }
  handles::ScreenDevice const screen(GetDC(nullptr));
  OutputDevice device(screen.get());
  device.ChangeMapMode(GetMapMode());
  device.ChangeFont(data_->state().font);
  return device.context_ ? device.GetTextSize(text) : Size();
}

} // namespace SV
