#pragma once
/// \file
/// A control of the program's own, which shows what mouse and keyboard do.

#include "sv/control.hpp"

#include <functional>

namespace controls {

class InputPad : public SV::Control {
public:
  /// \param onMenu  called with the point of the screen at which the user wants a menu
  InputPad(SV::Window * parent, std::function<void(SV::Point const &)> onMenu);

  void Paint(SV::OutputDevice & device, SV::Rectangle const & area) override;
  void MouseMove(SV::MouseEvent const & event) override;
  void MouseButtonDown(SV::MouseEvent const & event) override;
  bool KeyInput(SV::KeyEvent const & event) override;
  void GotFocus() override;
  void LostFocus() override;

private:
  void say(SV::String const & text);

  std::function<void(SV::Point const &)> onMenu_;
  SV::String said_;
  bool hasFocus_ = false;
};

} // namespace controls
