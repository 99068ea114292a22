#pragma once
/// \file
/// A pane beside the documents: a caption with a button to close it, and lines of text below.

#include "windows/parts/themedwindow.hpp"
#include "windows/scrolling.hpp"

#include <functional>

namespace modeler {

/// The caption shows whether the pane has the keyboard. What has no room is scrolled to by bars, wheel and keys; Escape leaves the
/// pane.
class Pane : public ThemedWindow {
public:
  struct Line {
    SV::String text;
    ISequence<SV::Image const *> images = {}; ///< before the text, from the left
    long depth = 0;                           ///< how far to the right
  };

  struct Handlers {
    std::function<void()> close; ///< the button has been pressed
    std::function<void()> leave; ///< the keyboard belongs to the documents again
  };

  /// The caption's height, whatever the scale of the screen: the library draws its text and its button in one size.
  static constexpr long kCaption = 20;

  Pane(SV::Window & frame, std::function<SV::String()> title, Handlers handlers);

  void Paint(SV::OutputDevice & device, SV::Rectangle const & area) override;
  void Resize(SV::Size const & size) override;
  void MouseMove(SV::MouseEvent const & event) override;
  void MouseButtonDown(SV::MouseEvent const & event) override;
  void MouseButtonUp(SV::MouseEvent const & event) override;
  bool MouseWheel(SV::MouseEvent const & event) override;
  void CaptureLost() override;
  bool KeyInput(SV::KeyEvent const & event) override;
  void GotFocus() override;
  void LostFocus() override;

protected:
  virtual ISequence<Line> lines() const = 0;

  /// The room for a line of text, in pixels.
  long lineWidth() const;

  /// The user has clicked on a line.
  virtual void PressLine(std::size_t) {}
  void MouseLeft() override;
  long long HandleMessage(unsigned message, unsigned long long wParam, long long lParam) override;

private:
  SV::Rectangle caption() const;
  SV::Rectangle closeButton() const;
  void paintCaption();
  void paintLines(SV::OutputDevice & device);
  void paintLine(SV::VirtualDevice & buffer, Line const & line, SV::Point const & corner);
  void fitBars(ISequence<Line> const & all);
  void setHot(bool isHot);

  std::function<SV::String()> title_;
  Handlers handlers_;
  SV::Size whole_; ///< of the caption and all lines
  ScrollBars bars_;
  bool isActive_ = false;
  bool isHot_ = false;
  bool isPressed_ = false;
};

} // namespace modeler
