#pragma once
/// \file
/// The models that are open, and what is done with their files.

#include "background/journal.hpp"
#include "commands/command.hpp"
#include "windows/documents/processwindow.hpp"

#include <memory>

namespace modeler {

class Documents {
public:
  /// \param frame, journal  outlive it
  Documents(SV::MDIFrame & frame, Journal & journal) : frame_(frame), journal_(journal) {}

  /// Opening and saving.
  Commands GetCommands();

  /// Shows the process model of a file in a window of its own; says so where that cannot be done. The window of a file that is open
  /// already comes to the front, with the model as it was read.
  void Open(SV::String const & fileName);

  /// Writes the model in front to a file; asks before it overwrites one, and says so where that cannot be done.
  void Save(SV::String const & fileName);

  /// The window of the model in front; null when another window is, or none.
  ProcessWindow * GetFront() const;

  /// The window that was opened last and is still open, also where windows are suppressed and none is in front; null for none.
  ProcessWindow * GetNewest() const;

  /// The file that was opened last; empty before.
  SV::String const & GetLastFile() const { return lastFile_; }

  /// Called when another model may be in front; may be null.
  void ChangeFrontHdl(std::function<void()> handler) { frontChanged_ = std::move(handler); }

  /// To be called when the language has changed.
  void Retext();

private:
  struct Document {
    SV::String file;
    std::unique_ptr<ProcessWindow> window;
  };

  void show(SV::String const & fileName, ProcessModel const & model);
  bool bringToFront(SV::String const & fileName);
  void sayError(SV::String const & message);

  SV::MDIFrame & frame_;
  Journal & journal_;
  SV::String lastFile_;
  std::function<void()> frontChanged_;
  ISequence<Document> documents_;
};

} // namespace modeler
