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

private:
  struct Title {
    Item menu;
    Text text;
  };

  void select(unsigned short id);

  std::vector<Title> titles_;
  Commands commands_;
  std::map<Item, SV::PopupMenu> popups_;
  SV::MenuBar bar_;
};

} // namespace modeler
