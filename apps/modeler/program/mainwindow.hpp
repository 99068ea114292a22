#pragma once
/// \file
/// The main window with its menus and documents.

#include "background/journal.hpp"
#include "commands/menus.hpp"
#include "commands/models/analysiscommands.hpp"
#include "commands/models/documents.hpp"
#include "commands/models/dragcommands.hpp"
#include "commands/models/exportcommands.hpp"
#include "commands/models/findcommands.hpp"
#include "commands/models/printcommands.hpp"
#include "commands/program/diagnosticscommands.hpp"
#include "commands/program/helpcommands.hpp"
#include "commands/program/plugincommands.hpp"
#include "commands/program/traycommands.hpp"
#include "program/parts.hpp"
#include "windows/documents/eventswindow.hpp"
#include "windows/documents/factswindow.hpp"

#include "sv/mdi.hpp"

#include <memory>

namespace modeler {

/// It brings the parts of the program together: each part has its commands, the window puts them into the menus.
class MainWindow : public SV::MDIFrame {
public:
  /// \param events, journal, plugins, settings  outlive the window
  MainWindow(EventLog & events, Journal & journal, Plugins const & plugins, Settings const & settings);
  ~MainWindow() override;

  Documents & GetDocuments() { return documents_; }
  PrintCommands & GetPrintCommands() { return printCommands_; }
  DiagnosticsCommands & GetDiagnosticsCommands() { return diagnosticsCommands_; }
  HelpCommands & GetHelpCommands() { return helpCommands_; }

  void Resize(SV::Size const & size) override;

protected:
  long long HandleMessage(unsigned message, unsigned long long wParam, long long lParam) override;
  long long DefaultProcedure(unsigned message, unsigned long long wParam, long long lParam) override;

private:
  ISequence<ToolButton> toolButtons();
  Commands raiseCommands() const;
  Commands windowCommands();
  FactsWindow & showFacts();
  void showEvents();
  void showAbout();
  void retext();

  EventLog & eventLog_;
  Journal & journal_;
  Plugins const & plugins_;
  Menus menus_;
  Documents documents_;
  DragCommands dragCommands_;
  std::unique_ptr<Parts> parts_;
  PluginCommands pluginCommands_;
  TrayCommands trayCommands_;
  PrintCommands printCommands_;
  ExportCommands exportCommands_;
  FindCommands findCommands_;
  AnalysisCommands analysisCommands_;
  DiagnosticsCommands diagnosticsCommands_;
  HelpCommands helpCommands_;
  std::unique_ptr<FactsWindow> facts_;
  std::unique_ptr<EventsWindow> events_;
};

} // namespace modeler
