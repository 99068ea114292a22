#pragma once
/// \file
/// What a user can choose from a menu.

#include "commands/items.hpp"
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
};
using Commands = std::vector<Command>;

/// The name of a command that stands in the language packs.
inline std::function<SV::String()> named(Text which) {
  return [which] { return text(which); };
}

inline Command separator(Item menu) { return {menu, 0, {}, {}}; }

} // namespace modeler
