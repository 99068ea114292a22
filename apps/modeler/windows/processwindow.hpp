#pragma once
/// \file
/// The document window that draws a process model.

#include "model/layout.hpp"
#include "sv/mdi.hpp"
#include "windows/scrolling.hpp"

#include <functional>

namespace modeler {

/// It is as large as the picture, as far as the frame has room, and can be scrolled otherwise.
class ProcessWindow : public SV::MDIChild {
public:
  /// \param frontChanged  called when it has come to the front, or left it
  ProcessWindow(SV::MDIFrame & frame, ProcessModel const & model, std::function<void()> frontChanged);
  ~ProcessWindow() override;

  void Paint(SV::OutputDevice & device, SV::Rectangle const & area) override;
  void Resize(SV::Size const & size) override;

  /// To be called when the language has changed.
  void Retext();

  ProcessModel const & GetModel() const { return model_; }

protected:
  long long HandleMessage(unsigned message, unsigned long long wParam, long long lParam) override;

private:
  void arrange();
  void fitToPicture(SV::Size const & room);
  SV::Font headlineFont() const;
  SV::Font noteFont() const;
  SV::Size wholeSize() const;

  ProcessModel model_;
  std::function<void()> frontChanged_;
  Layout layout_;
  SV::String headline_;
  ISequence<SV::String> notes_; ///< one below the other
  long notesTop_ = 0;
  SV::Size headSize_; ///< of headline and notes
  ScrollBars bars_;
};

} // namespace modeler
