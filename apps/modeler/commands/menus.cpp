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
  bar_.ChangeSelectHdl([this](unsigned short id) { select(id); });
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
}

void Menus::select(unsigned short id) {
  auto const command = std::find_if(commands_.begin(), commands_.end(), [id](Command const & c) { return c.id == id; });
  if (command == commands_.end())
    return;
  // A command may end the program, or change the commands.
  std::function<void()> const execute = command->execute;
  execute();
  Refresh();
}

} // namespace modeler
