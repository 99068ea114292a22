#include "commandsmenu.hpp"

#include "plugintexts.hpp"

using SV::String;

namespace modeler {

CommandsMenu::CommandsMenu(SV::MenuBar & bar, ISequence<String> const & commands) : bar_(bar), commands_(commands) {
  if (commands_.empty())
    return;
  unsigned short item = kFirst;
  for (String const & command : commands_)
    menu_.InsertItem(item++, command);
  bar_.InsertItem(kMenu, text(kMenuCommands), static_cast<unsigned short>(bar_.GetItemCount() - 1));
  bar_.SetPopupMenu(kMenu, &menu_);
}

CommandsMenu::~CommandsMenu() { bar_.SetPopupMenu(kMenu, nullptr); }

String CommandsMenu::CommandOf(unsigned short item) const {
  return item >= kFirst && item - kFirst < static_cast<int>(commands_.size())
             ? commands_[static_cast<std::size_t>(item - kFirst)]
             : String();
}

void CommandsMenu::Retext() { bar_.SetItemText(kMenu, text(kMenuCommands)); }

} // namespace modeler
