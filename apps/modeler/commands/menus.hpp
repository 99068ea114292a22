#pragma once
/// \file
/// The menu bar, whose texts follow the language.

#include "commands/command.hpp"
#include "sv/menu.hpp"

#include <map>

namespace modeler {

/// The menus have the commands that are added, in that order.
class Menus {
public:
  Menus();
  Menus(Menus const &) = delete;
  Menus & operator=(Menus const &) = delete;

  SV::MenuBar & GetBar() { return bar_; }

  /// Before the last menu of the bar.
  void AddMenu(Item menu, Text text);
  void Add(Commands commands);

  /// Sets all texts and marks again, in the current language. It comes by itself after each command.
  void Refresh();

  /// Called after each Refresh, for what shows commands elsewhere. Null for nobody.
  void ChangeRefreshHdl(std::function<void()> handler) { refreshed_ = std::move(handler); }

  /// \name A command by its identifier, for what shows commands elsewhere
  /// Without such a command the name is empty, it is not checked, and choosing it does nothing.
  /// @{
  SV::String GetName(unsigned short id) const;
  bool IsChecked(unsigned short id) const;
  void Choose(unsigned short id);
  /// @}

private:
  struct Title {
    Item menu;
    Text text;
  };

  Command const * find(unsigned short id) const;

  std::vector<Title> titles_;
  Commands commands_;
  std::map<Item, SV::PopupMenu> popups_;
  SV::MenuBar bar_;
  std::function<void()> refreshed_;
};

} // namespace modeler
