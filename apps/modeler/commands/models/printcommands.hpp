#pragma once
/// \file
/// What is printed of the model in front.

#include "background/journal.hpp"
#include "commands/command.hpp"
#include "commands/models/documents.hpp"

namespace modeler {

class PrintCommands {
public:
  /// \param frame, documents, journal  outlive it
  PrintCommands(SV::MDIFrame & frame, Documents const & documents, Journal & journal)
      : frame_(frame), documents_(documents), journal_(journal) {}

  Commands GetCommands();

  /// Prints on the printer of the process without a question; says so where that cannot be done.
  /// \param what  "text" or "drawing"
  void Print(SV::String const & what);

private:
  void ask(bool asText);
  void print(bool asText);
  bool agrees(KivPrinter & printer, bool asText);
  void sayError();

  SV::MDIFrame & frame_;
  Documents const & documents_;
  Journal & journal_;
};

} // namespace modeler
