#pragma once
/// \file
/// Looking for a text in the model in front.

#include "commands/models/documents.hpp"
#include "model/analysis/nodesearch.hpp"

namespace modeler {

class FindCommands {
public:
  /// \param frame, documents, journal  outlive it
  FindCommands(SV::MDIFrame & frame, Documents & documents, Journal & journal)
      : frame_(frame), documents_(documents), journal_(journal) {}

  /// To ask for a text, and to go on to the next hit.
  Commands GetCommands();

private:
  void ask();
  void findNext();
  void say(SV::String const & message);

  SV::MDIFrame & frame_;
  Documents & documents_;
  Journal & journal_;
  Search search_; ///< the last one; without a text before the first
};

} // namespace modeler
