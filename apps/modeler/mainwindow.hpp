#pragma once
/// \file
/// The main window with its menus and documents.

#include "eventswindow.hpp"
#include "factswindow.hpp"
#include "sv/mdi.hpp"
#include "sv/menu.hpp"

#include <memory>

namespace modeler {

class MainWindow : public SV::MDIFrame {
public:
  /// \param events  outlives the window
  explicit MainWindow(EventLog & events);
  ~MainWindow() override;

private:
  void fillMenus();
  void select(unsigned short id);
  void showFacts();
  void showEvents();
  void arrange(unsigned message);
  void showAbout();

  EventLog & eventLog_;
  SV::MenuBar bar_;
  SV::PopupMenu file_;
  SV::PopupMenu raise_;
  SV::PopupMenu window_;
  SV::PopupMenu help_;
  std::unique_ptr<FactsWindow> facts_;
  std::unique_ptr<EventsWindow> events_;
};

} // namespace modeler
