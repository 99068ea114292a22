#pragma once
/// \file
/// The main window in the tray, and the trial run, whose end is reported there.

#include "background/journal.hpp"
#include "background/trialrun.hpp"
#include "commands/command.hpp"
#include "commands/models/documents.hpp"
#include "windows/trayicon.hpp"

namespace modeler {

class TrayCommands {
public:
  /// \param frame, documents, journal  outlive it
  TrayCommands(SV::MDIFrame & frame, Documents const & documents, Journal & journal);

  Commands GetCommands();

private:
  void minimise();
  void restore();
  void exit();
  void run();
  void reportEnd();
  void removeUnlessNeeded();
  SV::String tip() const;

  SV::MDIFrame & frame_;
  Documents const & documents_;
  Journal & journal_;
  SV::String runningModel_;
  bool isMinimised_ = false;
  TrayIcon icon_;
  TrialRun run_;
  SV::Timer afterBalloon_;
};

} // namespace modeler
