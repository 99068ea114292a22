#include "windows/parts/pane.hpp"

#include "tools/winapi.hpp"
#include "windows/scaling.hpp"

#include <algorithm>
#include <utility>

namespace modeler {
namespace {

constexpr long kButton = 16;
constexpr long kMargin = 6; // at 96 dots per inch, as are those below
constexpr long kIndent = 16;
constexpr long kGap = 4;

} // namespace

Pane::Pane(SV::Window & frame, std::function<SV::String()> title, Handlers handlers)
    : ThemedWindow(frame), title_(std::move(title)), handlers_(std::move(handlers)) {}

SV::Rectangle Pane::caption() const { return {{0, 0}, {GetOutputSizePixel().width, kCaption}}; }

SV::Rectangle Pane::closeButton() const {
  long const gap = (kCaption - kButton) / 2;
  return {{GetOutputSizePixel().width - kButton - gap, gap}, {kButton, kButton}};
}

long Pane::lineWidth() const { return GetOutputSizePixel().width - 2 * scaledAcross(kMargin); }

void Pane::Paint(SV::OutputDevice & device, SV::Rectangle const &) {
  paintLines(device);
  paintCaption();
}

void Pane::paintCaption() {
  KivTheme const & theme = KivThemeManager::CurrentTheme();
  KivThemeClass const look = isActive_ ? CaptionActive : CaptionInactive;
  theme.Draw(*this, look, caption());
  SV::Rectangle const button = closeButton();
  theme.DrawText(*this, look, {{0, 0}, {button.Left(), kCaption}}, title_());
  theme.DrawCloseButton(*this, look, button, isHot_, isPressed_ && isHot_);
}

/// The bars are those of the window: they stand beside the caption too.
void Pane::fitBars(ISequence<Line> const & all) {
  long width = 0;
  for (Line const & line : all) {
    long pictures = 0;
    for (SV::Image const * const image : line.images)
      pictures += image->GetSizePixel().width + scaledAcross(kGap);
    width = std::max(width, scaledAcross(line.depth * kIndent) + pictures + textSize(line.text).width);
  }
  SV::Size const whole{width + 2 * scaledAcross(kMargin),
                       kCaption + 2 * scaledDown(kMargin) + static_cast<long>(all.size()) * lineHeight()};
  if (whole == whole_)
    return;
  whole_ = whole;
  bars_.SetWhole(GethWnd(), whole, lineHeight());
}

void Pane::Resize(SV::Size const &) { bars_.Fit(GethWnd()); }

/// Through the library's buffer, so that nothing flickers.
void Pane::paintLines(SV::OutputDevice & device) {
  ISequence<Line> const all = lines();
  fitBars(all);
  SV::Size const size = {GetOutputSizePixel().width, GetOutputSizePixel().height - kCaption};
  if (size.width < 1 || size.height < 1)
    return;
  SV::VirtualDevice & buffer = KivPaintBuffer::VD();
  buffer.ChangeFillInBrush(SV::Brush(SV::COL_WINDOW));
  buffer.DrawRect({{0, 0}, size});
  buffer.ChangeFont(font());
  SV::Point corner{scaledAcross(kMargin) - bars_.GetPosition().x, scaledDown(kMargin) - bars_.GetPosition().y};
  for (Line const & line : all) {
    if (corner.y > -lineHeight() && corner.y < size.height)
      paintLine(buffer, line, corner);
    corner.y += lineHeight();
  }
  buffer.ChangePen(SV::Pen(KivThemeManager::CurrentTheme().GetColor(4)));
  buffer.ChangeFillInBrush(SV::Brush());
  buffer.DrawRect({{0, -1}, {size.width, size.height + 1}});
  device.DrawOutDev({0, kCaption}, size, {0, 0}, size, buffer);
}

void Pane::paintLine(SV::VirtualDevice & buffer, Line const & line, SV::Point const & corner) {
  long x = corner.x + scaledAcross(line.depth * kIndent);
  for (SV::Image const * const image : line.images) {
    SV::Size const picture = image->GetSizePixel();
    buffer.DrawImage({x, corner.y + (lineHeight() - picture.height) / 2}, *image);
    x += picture.width + scaledAcross(kGap);
  }
  buffer.DrawText({x, corner.y + scaledDown(2)}, line.text);
}

void Pane::setHot(bool isHot) {
  if (isHot == isHot_)
    return;
  isHot_ = isHot;
  Invalidate();
}

void Pane::MouseMove(SV::MouseEvent const & event) {
  watchMouse();
  setHot(contains(closeButton(), event.position));
}

void Pane::MouseLeft() { setHot(false); }

void Pane::MouseButtonDown(SV::MouseEvent const & event) {
  if (event.button != SV::MOUSE_LEFT)
    return;
  if (contains(closeButton(), event.position)) {
    isPressed_ = true;
    isHot_ = true;
    CaptureMouse();
    Invalidate();
    return;
  }
  GrabFocus();
  long const below = event.position.y - kCaption - scaledDown(kMargin) + bars_.GetPosition().y;
  if (event.position.y >= kCaption && below >= 0)
    PressLine(static_cast<std::size_t>(below / lineHeight()));
}

void Pane::MouseButtonUp(SV::MouseEvent const & event) {
  if (!isPressed_)
    return;
  isPressed_ = false;
  ReleaseMouse();
  Invalidate();
  if (contains(closeButton(), event.position))
    handlers_.close();
}

void Pane::CaptureLost() {
  isPressed_ = false;
  Invalidate();
}

bool Pane::MouseWheel(SV::MouseEvent const & event) {
  auto const delta = static_cast<WORD>(static_cast<short>(event.notches * WHEEL_DELTA));
  WORD const held = event.modifiers == SV::KEY_SHIFT ? MK_SHIFT : 0;
  return bars_.Handle(GethWnd(), WM_MOUSEWHEEL, MAKEWPARAM(held, delta));
}

bool Pane::KeyInput(SV::KeyEvent const & event) {
  struct Row {
    SV::KeyCode key;
    WPARAM command;
  };
  for (Row const & row : {Row{SV::KEY_UP, SB_LINEUP},
                          {SV::KEY_DOWN, SB_LINEDOWN},
                          {SV::KEY_PAGEUP, SB_PAGEUP},
                          {SV::KEY_PAGEDOWN, SB_PAGEDOWN},
                          {SV::KEY_HOME, SB_TOP},
                          {SV::KEY_END, SB_BOTTOM}})
    if (row.key == event.code)
      return bars_.Handle(GethWnd(), WM_VSCROLL, row.command);
  if (event.code == SV::KEY_ESCAPE)
    handlers_.leave();
  return event.code == SV::KEY_ESCAPE;
}

long long Pane::HandleMessage(unsigned message, unsigned long long wParam, long long lParam) {
  if ((message == WM_HSCROLL || message == WM_VSCROLL) && bars_.Handle(GethWnd(), message, wParam))
    return 0;
  return ThemedWindow::HandleMessage(message, wParam, lParam);
}

void Pane::GotFocus() {
  isActive_ = true;
  Invalidate();
}

void Pane::LostFocus() {
  isActive_ = false;
  Invalidate();
}

} // namespace modeler
