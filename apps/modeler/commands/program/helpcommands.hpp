#pragma once
/// \file
/// The help of the program: the list of its keys.

#include "commands/menus.hpp"
#include "sv/help.hpp"
#include "sv/mdi.hpp"
#include "windows/documents/tablewindow.hpp"

#include <memory>

namespace modeler {

class HelpCommands {
public:
  /// \param frame, menus  outlive it
  HelpCommands(SV::MDIFrame & frame, Menus const & menus);

  Commands GetCommands();

  /// Has the keys shown where the program's help file is missing. To be called when the application has its help object.
  void Install();

  /// To be called when the language has changed.
  void Retext();

private:
  /// F1 starts it, wherever the keyboard is.
  class KeysHelp : public SV::Help {
  public:
    explicit KeysHelp(HelpCommands & commands) : commands_(commands) {}
    bool Start(unsigned long topic) override;

  private:
    HelpCommands & commands_;
  };

  void showKeys();
  TableWindow::Rows keys() const;

  SV::MDIFrame & frame_;
  Menus const & menus_;
  KeysHelp help_{*this};
  std::unique_ptr<TableWindow> window_;
};

} // namespace modeler
