#pragma once
/// \file
/// The document window that shows the facts of the start, in the language of the moment.

#include "background/journal.hpp"
#include "background/plugins.hpp"
#include "windows/documents/tablewindow.hpp"
#include "windows/documents/textdrag.hpp"

namespace modeler {

/// Activities can be dropped on it; they are listed below the facts.
class FactsWindow : public TableWindow, public TextTarget {
public:
  /// \param plugins, journal  outlive the window
  FactsWindow(SV::MDIFrame & frame, Plugins const & plugins, Journal & journal);

  void TakeText(SV::String const & activity) override;

private:
  Rows rows() const;

  Plugins const & plugins_;
  Journal & journal_;
  ISequence<SV::String> activities_;
};

} // namespace modeler
