#pragma once
/// \file
/// The menu bar, whose texts follow the language.

#include "commands/command.hpp"
#include "sv/accelerator.hpp"
#include "sv/menu.hpp"

#include <map>

namespace modeler {

/// The menus have the commands that are added, in that order. A name without a mnemonic gets a letter that is free in its menu.
class Menus {
public:
  Menus();
  Menus(Menus const &) = delete;
  Menus & operator=(Menus const &) = delete;

  SV::MenuBar & GetBar() { return bar_; }

  /// Before the last menu of the bar.
  void AddMenu(Item menu, Text text);
  void Add(Commands commands);

  /// The menu ends with commands that may be other ones at each Refresh, after a separator. To be called when it has all of its others.
  void AddVariable(Item menu, std::function<Commands()> commands);

  /// Sets all texts and marks again, in the current language. It comes by itself after each command.
  void Refresh();

  /// Called after each Refresh, for what shows commands elsewhere. May be null.
  void ChangeRefreshHdl(std::function<void()> handler) { refreshed_ = std::move(handler); }

  /// \name A command by its identifier, for what shows commands elsewhere
  /// Without such a command the name is empty, it is not checked, and choosing it does nothing.
  /// @{
  SV::String GetName(unsigned short id) const;
  bool IsChecked(unsigned short id) const;
  void Choose(unsigned short id); ///< nothing either while it is not enabled
  /// @}

  /// A key, and what it does.
  struct Key {
    SV::String key;
    SV::String name;
  };
  /// The keys of all commands, as their names give them, in the current language.
  ISequence<Key> GetKeys() const;

private:
  struct Title {
    Item menu;
    Text text;
  };

  /// Commands at the end of a menu.
  struct Variable {
    Item menu;
    unsigned short position; ///< of the first one
    std::function<Commands()> give;
    Commands commands;
  };

  Command const * find(unsigned short id) const;
  static void refresh(Variable & variable, SV::Menu & menu);
  static void show(Command const & command, SV::Menu & menu);

  std::vector<Title> titles_;
  Commands commands_;
  std::vector<Variable> variables_;
  SV::Accelerator keys_;
  std::map<Item, SV::PopupMenu> popups_;
  SV::MenuBar bar_;
  std::function<void()> refreshed_;
};

} // namespace modeler
