#pragma once
/// \file
/// What a user can choose from a menu.

#include "commands/items.hpp"
#include "sv/keycodes.hpp"
#include "texts/texts.hpp"

#include <functional>
#include <vector>

namespace modeler {

/// A command knows its place, its text and what it does; the menus know no more of it.
struct Command {
  Item menu;
  unsigned short id;                ///< 0: a separator
  std::function<SV::String()> name; ///< in the current language
  std::function<void()> execute;
  std::function<bool()> isChecked = [] { return false; };
  std::function<bool()> isEnabled = [] { return true; };
  SV::KeyCode key = 0; ///< chooses it too, as long as no dialog is open; the name says so after a tab
};
using Commands = std::vector<Command>;

inline Command withKey(Command command, SV::KeyCode key) {
  command.key = key;
  return command;
}

/// The key of a letter with Ctrl.
constexpr SV::KeyCode control(char letter) {
  return static_cast<SV::KeyCode>(SV::KEY_CONTROL | (SV::KEY_A + (letter - 'A')));
}

inline Command separator(Item menu) { return {menu, 0, {}, {}}; }

} // namespace modeler
