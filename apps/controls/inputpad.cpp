#include "inputpad.hpp"

#include "sv/outputdevice.hpp"
#include "texts.hpp"

namespace controls {

InputPad::InputPad(SV::Window * parent, std::function<void(SV::Point const &)> onMenu)
    : Control(parent, SV::WB_BORDER), onMenu_(std::move(onMenu)), said_(text(Text::Pad)) {
  ChangeBackgroundBrush(SV::Brush(SV::COL_WINDOW));
}

void InputPad::Paint(SV::OutputDevice & device, SV::Rectangle const &) {
  SV::Size const letter = device.GetTextSize("A");
  device.DrawText({letter.width, letter.height / 2}, said_);
  if (hasFocus_) {
    device.ChangePen(SV::Pen(SV::COL_HIGHLIGHT));
    device.DrawRect({{0, 0}, GetOutputSizePixel()});
  }
}

void InputPad::MouseMove(SV::MouseEvent const & event) {
  say(text(Text::PadMouse, SV::String(event.position.x) + ", " + SV::String(event.position.y)));
}

void InputPad::MouseButtonDown(SV::MouseEvent const & event) {
  GrabFocus();
  if (event.button == SV::MOUSE_RIGHT)
    onMenu_(OutputToScreenPixel(event.position));
}

bool InputPad::KeyInput(SV::KeyEvent const & event) {
  say(text(Text::PadKey, SV::String(static_cast<long>(event.code))));
  return false;
}

void InputPad::GotFocus() {
  hasFocus_ = true;
  Invalidate();
}

void InputPad::LostFocus() {
  hasFocus_ = false;
  Invalidate();
}

void InputPad::say(SV::String const & text) {
  said_ = text;
  Invalidate();
}

} // namespace controls
