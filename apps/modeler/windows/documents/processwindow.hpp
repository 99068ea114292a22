#pragma once
/// \file
/// The document window that draws a process model.

#include "model/layout/layout.hpp"
#include "windows/documents/documentwindow.hpp"
#include "windows/documents/textdrag.hpp"
#include "windows/scrolling.hpp"

#include <functional>

namespace modeler {

/// Tab, and a click, select an activity, whose text can be dragged to another window.
///
/// It is as large as the picture, as far as the frame has room, and can be scrolled otherwise.
class ProcessWindow : public DocumentWindow {
public:
  /// \param frontChanged  called when it has come to the front, or left it
  ProcessWindow(SV::MDIFrame & frame, ProcessModel const & model, std::function<void()> frontChanged);
  ~ProcessWindow() override;

  void Paint(SV::OutputDevice & device, SV::Rectangle const & area) override;
  void Resize(SV::Size const & size) override;
  void MouseMove(SV::MouseEvent const & event) override;
  void MouseButtonDown(SV::MouseEvent const & event) override;
  void MouseButtonUp(SV::MouseEvent const & event) override;
  void CaptureLost() override;
  bool KeyInput(SV::KeyEvent const & event) override;

  /// To be called when the language has changed.
  void Retext();

  ProcessModel const & GetModel() const { return model_; }
  Layout const & GetLayout() const { return layout_; } ///< measured in the window's font

  /// The place of the node that is selected; beyond all of them for none.
  std::size_t GetSelected() const { return selected_; }

  /// Selects a node of any kind, which comes into view.
  void Select(std::size_t node);

  /// The text of the activity that is selected, by this call the next one if none was; empty if the model has none.
  SV::String SelectedActivity();

protected:
  long long HandleMessage(unsigned message, unsigned long long wParam, long long lParam) override;

private:
  static constexpr std::size_t kNone = static_cast<std::size_t>(-1);

  void arrange();
  void fitToPicture(SV::Size const & room);
  SV::Font headlineFont() const;
  SV::Font noteFont() const;
  SV::Size wholeSize() const;
  long pictureTop() const;
  void drawSelection(SV::OutputDevice & paper) const;
  std::size_t activityAt(SV::Point const & position) const;
  bool selectNext(bool forwards);

  ProcessModel model_;
  std::function<void()> frontChanged_;
  Layout layout_;
  SV::String headline_;
  ISequence<SV::String> notes_; ///< one below the other
  long notesTop_ = 0;
  SV::Size headSize_; ///< of headline and notes
  ScrollBars bars_;
  std::size_t selected_ = kNone; ///< a node's place in the model
  TextDrag drag_{*this};
};

} // namespace modeler
