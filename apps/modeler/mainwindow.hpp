#pragma once
/// \file
/// The main window with its menus and documents.

#include "commandsmenu.hpp"
#include "eventswindow.hpp"
#include "factswindow.hpp"
#include "journal.hpp"
#include "menus.hpp"
#include "processwindow.hpp"
#include "sv/mdi.hpp"

#include <memory>

namespace modeler {

class MainWindow : public SV::MDIFrame {
public:
  /// \param events, journal, plugins  outlive the window
  MainWindow(EventLog & events, Journal & journal, Plugins const & plugins);
  ~MainWindow() override;

  /// Shows the process model of a file in a window of its own; says so where that cannot be done.
  void OpenModel(SV::String const & fileName);

  /// Writes the model in front to a file; asks before it overwrites one, and says so where that cannot be done.
  void SaveModel(SV::String const & fileName);

private:
  void select(unsigned short id);
  void showFacts();
  void showEvents();
  void chooseModel();
  void chooseTarget();
  void execute(SV::String const & command);
  void changeLanguage(std::size_t place);
  void arrange(unsigned message);
  void showAbout();

  EventLog & eventLog_;
  Journal & journal_;
  Plugins const & plugins_;
  Menus menus_;
  CommandsMenu commands_;
  SV::String lastModel_;
  std::unique_ptr<FactsWindow> facts_;
  std::unique_ptr<EventsWindow> events_;
  ISequence<std::unique_ptr<ProcessWindow>> models_;
};

} // namespace modeler
