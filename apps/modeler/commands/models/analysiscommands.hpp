#pragma once
/// \file
/// What is worked out about the model in front.

#include "commands/models/documents.hpp"
#include "windows/documents/tablewindow.hpp"

#include <memory>

namespace modeler {

class AnalysisCommands {
public:
  /// \param frame, documents, journal  outlive it
  AnalysisCommands(SV::MDIFrame & frame, Documents const & documents, Journal & journal)
      : frame_(frame), documents_(documents), journal_(journal) {}

  /// The times of its paths.
  Commands GetCommands();

  /// To be called when the language has changed.
  void Retext();

private:
  void showTimes();

  SV::MDIFrame & frame_;
  Documents const & documents_;
  Journal & journal_;
  ProcessModel model_; ///< whose times are shown, also when its own window has gone
  std::unique_ptr<TableWindow> times_;
};

} // namespace modeler
