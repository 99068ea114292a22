#pragma once
/// \file
/// The main window with its menus and documents.

#include "background/journal.hpp"
#include "commands/documents.hpp"
#include "commands/dragcommands.hpp"
#include "commands/menus.hpp"
#include "commands/plugincommands.hpp"
#include "windows/eventswindow.hpp"
#include "windows/factswindow.hpp"

#include "sv/mdi.hpp"

#include <memory>

namespace modeler {

/// It brings the parts of the program together: each part has its commands, the window puts them into the menus.
class MainWindow : public SV::MDIFrame {
public:
  /// \param events, journal, plugins  outlive the window
  MainWindow(EventLog & events, Journal & journal, Plugins const & plugins);
  ~MainWindow() override;

  Documents & GetDocuments() { return documents_; }

private:
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
  PluginCommands pluginCommands_;
  std::unique_ptr<FactsWindow> facts_;
  std::unique_ptr<EventsWindow> events_;
};

} // namespace modeler
