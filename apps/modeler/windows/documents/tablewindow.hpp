#pragma once
/// \file
/// A document window of lines in columns.

#include "kivara.hpp"
#include "windows/documents/documentwindow.hpp"
#include "windows/scrolling.hpp"

#include <functional>

namespace modeler {

/// The columns are as wide as their texts; what has no room is scrolled to, by bars, wheel and keys.
class TableWindow : public DocumentWindow {
public:
  using Row = ISequence<SV::String>; ///< a text for each column; those that are missing stay empty
  using Rows = ISequence<Row>;

  /// \param title, rows  asked for in the current language, not before Show
  TableWindow(SV::MDIFrame & frame, std::function<SV::String()> title, std::function<Rows()> rows);
  ~TableWindow() override;

  void Show() override;
  void Paint(SV::OutputDevice & device, SV::Rectangle const & area) override;
  void Resize(SV::Size const & size) override;

  /// To be called when the language has changed, or what the rows show.
  void Retext();

protected:
  long long HandleMessage(unsigned message, unsigned long long wParam, long long lParam) override;

private:
  void arrange();

  std::function<SV::String()> title_;
  std::function<Rows()> giveRows_;
  Rows rows_;
  ISequence<long> columns_; ///< where each begins
  long lineHeight_ = 1;
  ScrollBars bars_;
};

} // namespace modeler
