#pragma once
/// \file
/// What helps to find faults: the record of messages, a request to a URL, and who is at work.

#include "background/journal.hpp"
#include "commands/command.hpp"

#include "sv/window.hpp"

namespace modeler {

class DiagnosticsCommands {
public:
  /// \param frame, journal  outlive it
  DiagnosticsCommands(SV::Window & frame, Journal & journal) : frame_(frame), journal_(journal) {}

  Commands GetCommands();

  /// Records the messages of the main window from now on, without a word.
  /// \return false when their file cannot be written
  bool StartWatch();

private:
  void toggleWatch();
  bool isWatched() const;
  void sendRequest();
  void showUser();

  SV::Window & frame_;
  Journal & journal_;
  SV::String record_; ///< the file of the messages, once they have been recorded
  SV::String url_ = "http://";
};

} // namespace modeler
