#include "commands/menus.hpp"

#include "texts/dragtexts.hpp"

#include <algorithm>
#include <utility>

namespace modeler {

Menus::Menus() {
  AddMenu(MENU_HELP, Text::MenuHelp);
  AddMenu(MENU_FILE, Text::MenuFile);
  AddMenu(MENU_EDIT, kMenuEdit);
  AddMenu(MENU_RAISE, Text::MenuRaise);
  AddMenu(MENU_WINDOW, Text::MenuWindow);
  AddMenu(MENU_LANGUAGE, Text::MenuLanguage);
  bar_.ChangeSelectHdl([this](unsigned short id) { Choose(id); });
}

void Menus::AddMenu(Item menu, Text text) {
  titles_.push_back({menu, text});
  int const last = std::max(bar_.GetItemCount() - 1, 0);
  bar_.InsertItem(menu, modeler::text(text), static_cast<unsigned short>(last));
  bar_.SetPopupMenu(menu, &popups_[menu]);
}

void Menus::Add(Commands commands) {
  for (Command & command : commands) {
    SV::PopupMenu & menu = popups_.at(command.menu);
    if (command.id == 0) {
      menu.InsertSeparator();
      continue;
    }
    menu.InsertItem(command.id, command.name());
    commands_.push_back(std::move(command));
  }
  Refresh();
}

void Menus::Refresh() {
  for (Title const & title : titles_)
    bar_.SetItemText(title.menu, text(title.text));
  for (Command const & command : commands_) {
    SV::PopupMenu & menu = popups_.at(command.menu);
    menu.SetItemText(command.id, command.name());
    menu.CheckItem(command.id, command.isChecked());
    menu.EnableItem(command.id, command.isEnabled());
  }
  if (refreshed_)
    refreshed_();
}

Command const * Menus::find(unsigned short id) const {
  auto const command = std::find_if(commands_.begin(), commands_.end(), [id](Command const & c) { return c.id == id; });
  return command != commands_.end() ? &*command : nullptr;
}

SV::String Menus::GetName(unsigned short id) const {
  Command const * const command = find(id);
  return command != nullptr ? command->name() : SV::String();
}

bool Menus::IsChecked(unsigned short id) const {
  Command const * const command = find(id);
  return command != nullptr && command->isChecked();
}

void Menus::Choose(unsigned short id) {
  Command const * const command = find(id);
  if (command == nullptr)
    return;
  // A command may end the program, or change the commands.
  std::function<void()> const execute = command->execute;
  execute();
  Refresh();
}

} // namespace modeler
