#pragma once
/// \file
/// A bar of buttons with texts.

#include "windows/parts/themedwindow.hpp"

#include <functional>

namespace modeler {

struct ToolButton {
  std::function<SV::String()> name; ///< in the current language
  std::function<void()> press;
  std::function<bool()> isChecked;
  bool beginsGroup = false; ///< a gap precedes it
};

/// Its buttons are in the menus too, where the keyboard reaches them.
class ToolBar : public ThemedWindow {
public:
  ToolBar(SV::Window & frame, ISequence<ToolButton> buttons);

  /// What its buttons need, in pixels. Where the bar is too narrow for one row of them, they stand in several.
  long GetHeight(long width) const;

  /// Where they stand in a bar of that width.
  ISequence<SV::Rectangle> GetPlaces(long width) const;

  void Paint(SV::OutputDevice & device, SV::Rectangle const & area) override;
  void MouseMove(SV::MouseEvent const & event) override;
  void MouseButtonDown(SV::MouseEvent const & event) override;
  void MouseButtonUp(SV::MouseEvent const & event) override;
  void CaptureLost() override;

protected:
  void MouseLeft() override;

private:
  static constexpr std::size_t kNone = static_cast<std::size_t>(-1);

  ISequence<SV::Rectangle> places() const { return GetPlaces(GetOutputSizePixel().width); }
  std::size_t buttonAt(SV::Point const & point) const;
  void paintButton(SV::OutputDevice & device, std::size_t index, SV::Rectangle const & place);
  void setHot(std::size_t index);

  ISequence<ToolButton> buttons_;
  std::size_t hot_ = kNone;
  std::size_t pressed_ = kNone;
};

} // namespace modeler
