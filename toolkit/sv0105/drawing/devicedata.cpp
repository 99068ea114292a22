#include "drawing/devicedata.hpp"

#include <utility>

namespace SV::detail {

namespace {

/// Whether the system would make the same font of both: colours are not part of it.
bool isSameFont(Font const & a, Font const & b) {
  return a.GetSize() == b.GetSize() && a.GetWeight() == b.GetWeight() && a.GetCharSet() == b.GetCharSet() &&
         a.GetPitch() == b.GetPitch() && a.GetName() == b.GetName();
}

} // namespace

void DeviceData::open(HDC context) {
  context_ = context;
  saved_ = SaveDC(context);
  SetMapMode(context, MM_TEXT);
  SetTextAlign(context, TA_LEFT | TA_TOP | TA_NOUPDATECP);
  SetStretchBltMode(context, COLORONCOLOR);
  if (!state_.clip.IsUnlimited())
    selectClip();
}

void DeviceData::close() {
  if (!context_)
    return;
  RestoreDC(context_, saved_);
  context_ = nullptr;
  forgetSelected();
  ownersClip_ = Region();
  ownersClipKnown_ = false;
  if (HPEN const pen = std::exchange(pen_, nullptr))
    DeleteObject(pen);
  if (HFONT const font = std::exchange(font_, nullptr))
    DeleteObject(font);
}

void DeviceData::forgetSelected() { penIn_ = brushIn_ = fontIn_ = false; }

Pen DeviceData::changePen(Pen const & pen) {
  penIn_ = false;
  return std::exchange(state_.pen, pen);
}

Brush DeviceData::changeBrush(Brush const & brush) {
  brushIn_ = false;
  return std::exchange(state_.brush, brush);
}

Brush DeviceData::changeBackground(Brush const & brush) { return std::exchange(state_.background, brush); }

Font DeviceData::changeFont(Font const & font) {
  fontIn_ = false;
  return std::exchange(state_.font, font);
}

Region DeviceData::changeClip(Region const & clip) {
  Region former = std::exchange(state_.clip, clip);
  if (context_ && !(former.IsUnlimited() && clip.IsUnlimited()))
    selectClip();
  return former;
}

MapMode DeviceData::changeMapMode(MapMode const & mode) {
  penIn_ = fontIn_ = false;
  return std::exchange(state_.mapMode, mode);
}

void DeviceData::push() { kept_.push_back(state_); }

void DeviceData::pop() {
  if (kept_.empty())
    return;
  changeClip(kept_.back().clip);
  state_ = std::move(kept_.back());
  kept_.pop_back();
  forgetSelected();
}

void DeviceData::selectPen(long width) {
  HPEN const former = std::exchange(pen_, nullptr);
  COLORREF const color = state_.pen.GetColor().GetRGB();
  if (!state_.pen.IsNone() && width > 1)
    pen_ = CreatePen(PS_SOLID, width, color);
  if (pen_) {
    SelectObject(context_, pen_);
  } else {
    SelectObject(context_, GetStockObject(state_.pen.IsNone() ? NULL_PEN : DC_PEN));
    SetDCPenColor(context_, color);
  }
  if (former)
    DeleteObject(former);
  penIn_ = true;
}

void DeviceData::selectBrush() {
  SelectObject(context_, GetStockObject(state_.brush.IsNone() ? NULL_BRUSH : DC_BRUSH));
  SetDCBrushColor(context_, state_.brush.GetColor().GetRGB());
  brushIn_ = true;
}

void DeviceData::selectFont(Size const & size) {
  Font const & font = state_.font;
  Font scaled = font;
  scaled.ChangeSize(size);
  if (!font_ || !isSameFont(scaled, made_)) {
    HFONT const former = std::exchange(font_, scaled.CreateSystemFont());
    SelectObject(context_, font_ ? font_ : GetStockObject(SYSTEM_FONT));
    if (former)
      DeleteObject(former);
    made_ = scaled;
  }
  SetTextColor(context_, font.GetColor().GetRGB());
  SetBkColor(context_, font.GetFillColor().GetRGB());
  SetBkMode(context_, font.IsTransparent() ? TRANSPARENT : OPAQUE);
  fontIn_ = true;
}

void DeviceData::keepOwnersClip() {
  ownersClipKnown_ = true;
  Region found{Rectangle()};
  if (found.GethRgn() && GetClipRgn(context_, found.GethRgn()) == 1)
    ownersClip_ = found;
}

void DeviceData::selectClip() {
  if (!ownersClipKnown_)
    keepOwnersClip();
  SelectClipRgn(context_, ownersClip_.GethRgn());
  if (!state_.clip.IsUnlimited())
    ExtSelectClipRgn(context_, state_.clip.GethRgn(), RGN_AND);
}

} // namespace SV::detail
