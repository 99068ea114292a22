#pragma once
/// \file
/// What the parts of the main window around the documents have in common.

#include "kivara.hpp"
#include "sv/window.hpp"

namespace modeler {

/// A window that looks as the theme says, and knows when the mouse has left it. Its Paint has to draw all of it: the
/// background is not filled before.
class ThemedWindow : public SV::Window {
public:
  explicit ThemedWindow(SV::Window & frame) : Window(&frame) { KivThemeManager::Instance().AddWindow(this); }
  ~ThemedWindow() override { KivThemeManager::Instance().RemoveWindow(this); }

protected:
  /// To be called while the mouse is over it: MouseLeft follows.
  void watchMouse();
  virtual void MouseLeft() {}

  long long HandleMessage(unsigned message, unsigned long long wParam, long long lParam) override;

  /// The window's font, to be drawn on whatever is there already.
  SV::Font font() const;

  /// Of a text in that font, at any time: the device of the window has the font only while Paint runs.
  SV::Size textSize(SV::String const & text) const;

  /// The height of a line of text.
  long lineHeight() const;

private:
  mutable SV::VirtualDevice ruler_;
};

/// Whether the rectangle has that point.
inline bool contains(SV::Rectangle const & area, SV::Point const & point) {
  return point.x >= area.Left() && point.x <= area.Right() && point.y >= area.Top() && point.y <= area.Bottom();
}

} // namespace modeler
