#pragma once
/// \file
/// What other programs get of the model in front: XML, and the drawing as a picture.

#include "background/journal.hpp"
#include "commands/command.hpp"
#include "commands/models/documents.hpp"

namespace modeler {

class ExportCommands {
public:
  /// \param frame, documents, journal  outlive it
  ExportCommands(SV::MDIFrame & frame, Documents const & documents, Journal & journal)
      : frame_(frame), documents_(documents), journal_(journal) {}

  Commands GetCommands();

private:
  using Write = std::function<bool(SV::String const & fileName, ProcessWindow const & window)>;

  Command command(unsigned short id, Text name, Text kind, char const * ending, Write write);

  SV::MDIFrame & frame_;
  Documents const & documents_;
  Journal & journal_;
};

} // namespace modeler
