#pragma once
/// \file
/// The main window with its menus and documents.

#include "factswindow.hpp"
#include "sv/mdi.hpp"
#include "sv/menu.hpp"

#include <memory>

namespace modeler {

class MainWindow : public SV::MDIFrame {
public:
  MainWindow();
  ~MainWindow() override;

private:
  void fillMenus();
  void select(unsigned short id);
  void showFacts();
  void arrange(unsigned message);
  void showAbout();

  SV::MenuBar bar_;
  SV::PopupMenu file_;
  SV::PopupMenu window_;
  SV::PopupMenu help_;
  std::unique_ptr<FactsWindow> facts_;
};

} // namespace modeler
