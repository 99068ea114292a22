#include "windows/pane.hpp"

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

/// Through the library's buffer, so that nothing flickers.
void Pane::paintLines(SV::OutputDevice & device) {
  SV::Size const size = {GetOutputSizePixel().width, GetOutputSizePixel().height - kCaption};
  if (size.width < 1 || size.height < 1)
    return;
  ISequence<Line> const all = lines();
  first_ = std::clamp(first_, 0L, std::max(static_cast<long>(all.size()) - 1, 0L));
  SV::VirtualDevice & buffer = KivPaintBuffer::VD();
  buffer.ChangeFillInBrush(SV::Brush(SV::COL_WINDOW));
  buffer.DrawRect({{0, 0}, size});
  buffer.ChangeFont(font());
  long const height = lineHeight();
  long y = scaledDown(kMargin);
  for (auto line = all.begin() + first_; line != all.end() && y < size.height; ++line, y += height) {
    long x = scaledAcross(kMargin + line->depth * kIndent);
    for (SV::Image const * const image : line->images) {
      SV::Size const picture = image->GetSizePixel();
      buffer.DrawImage({x, y + (height - picture.height) / 2}, *image);
      x += picture.width + scaledAcross(kGap);
    }
    buffer.DrawText({x, y + scaledDown(2)}, line->text);
  }
  buffer.ChangePen(SV::Pen(KivThemeManager::CurrentTheme().GetColor(4)));
  buffer.ChangeFillInBrush(SV::Brush());
  buffer.DrawRect({{0, -1}, {size.width, size.height + 1}});
  device.DrawOutDev({0, kCaption}, size, {0, 0}, size, buffer);
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
  long const line = first_ + (event.position.y - kCaption - scaledDown(kMargin)) / lineHeight();
  if (event.position.y >= kCaption + scaledDown(kMargin))
    PressLine(static_cast<std::size_t>(line));
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

void Pane::scroll(long lines) {
  first_ = std::max(first_ + lines, 0L); // the other end is minded where the number of lines is known
  Invalidate();
}

bool Pane::MouseWheel(SV::MouseEvent const & event) {
  scroll(static_cast<long>(event.notches * -3));
  return true;
}

bool Pane::KeyInput(SV::KeyEvent const & event) {
  switch (event.code) {
  case SV::KEY_UP: scroll(-1); return true;
  case SV::KEY_DOWN: scroll(1); return true;
  case SV::KEY_ESCAPE: handlers_.leave(); return true;
  default: return false;
  }
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
