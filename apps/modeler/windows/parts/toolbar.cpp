#include "windows/parts/toolbar.hpp"

#include "windows/backbuffer.hpp"
#include "windows/scaling.hpp"

#include <utility>

namespace modeler {
namespace {

// At 96 dots per inch.
constexpr long kMargin = 3;
constexpr long kPadding = 8;
constexpr long kGap = 2;
constexpr long kGroupGap = 10;
constexpr long kAbove = 3;

} // namespace

ToolBar::ToolBar(SV::Window & frame, ISequence<ToolButton> buttons)
    : ThemedWindow(frame), buttons_(std::move(buttons)) {}

long ToolBar::GetHeight(long width) const {
  ISequence<SV::Rectangle> const all = GetPlaces(width);
  return all.empty() ? 0 : all.back().Bottom() + 1 + scaledDown(kMargin);
}

/// The texts change with the language, so they are measured each time.
ISequence<SV::Rectangle> ToolBar::GetPlaces(long width) const {
  ISequence<SV::Rectangle> result;
  long const left = scaledAcross(kMargin);
  long const height = lineHeight() + 2 * scaledDown(kAbove);
  SV::Point corner{left, scaledDown(kMargin)};
  for (ToolButton const & button : buttons_) {
    if (button.beginsGroup)
      corner.x += scaledAcross(kGroupGap);
    SV::Size const size{textSize(button.name()).width + 2 * scaledAcross(kPadding), height};
    if (corner.x + size.width > width && !result.empty())
      corner = {left, corner.y + height + scaledDown(kGap)};
    result.push_back({corner, size});
    corner.x += size.width + scaledAcross(kGap);
  }
  return result;
}

std::size_t ToolBar::buttonAt(SV::Point const & point) const {
  ISequence<SV::Rectangle> const all = places();
  for (std::size_t i = 0; i < all.size(); ++i)
    if (contains(all[i], point))
      return i;
  return kNone;
}

void ToolBar::Paint(SV::OutputDevice & device, SV::Rectangle const &) {
  SV::Rectangle const whole({0, 0}, GetOutputSizePixel());
  BackBuffer const buffer(device.GethDC(), whole);
  SV::OutputDevice paper(buffer.GethDC());
  KivThemeManager::CurrentTheme().DrawToolbarBackground(paper, true, whole);
  paper.ChangeFont(font());
  ISequence<SV::Rectangle> const all = places();
  for (std::size_t i = 0; i < all.size(); ++i)
    paintButton(paper, i, all[i]);
}

void ToolBar::paintButton(SV::OutputDevice & device, std::size_t index, SV::Rectangle const & place) {
  bool const isPressed = index == pressed_ && index == hot_;
  KivThemeManager::CurrentTheme().DrawToolbarButton(*this, device, place, buttons_[index].isChecked(), index == hot_,
                                                    isPressed, true);
  SV::String const name = buttons_[index].name();
  long const down = isPressed ? 1 : 0;
  device.DrawText({place.Left() + scaledAcross(kPadding) + down,
                   place.Top() + (place.GetHeight() - device.GetTextSize(name).height) / 2 + down},
                  name);
}

void ToolBar::setHot(std::size_t index) {
  if (index == hot_)
    return;
  hot_ = index;
  Invalidate();
}

void ToolBar::MouseMove(SV::MouseEvent const & event) {
  watchMouse();
  std::size_t const index = buttonAt(event.position);
  setHot(pressed_ == kNone || index == pressed_ ? index : kNone);
}

void ToolBar::MouseLeft() { setHot(kNone); }

void ToolBar::MouseButtonDown(SV::MouseEvent const & event) {
  if (event.button != SV::MOUSE_LEFT)
    return;
  hot_ = pressed_ = buttonAt(event.position);
  if (pressed_ != kNone)
    CaptureMouse();
  Invalidate();
}

void ToolBar::MouseButtonUp(SV::MouseEvent const & event) {
  if (event.button != SV::MOUSE_LEFT || pressed_ == kNone)
    return;
  std::size_t const index = std::exchange(pressed_, kNone);
  ReleaseMouse();
  Invalidate();
  if (buttonAt(event.position) == index) {
    std::function<void()> const press = buttons_[index].press; // it may close the program
    press();
  }
}

void ToolBar::CaptureLost() {
  pressed_ = kNone;
  Invalidate();
}

} // namespace modeler
