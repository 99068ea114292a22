#include "commands/menus.hpp"

#include "texts/dragtexts.hpp"
#include "texts/viewtexts.hpp"

#include "aacceler.hpp"
#include "sv/application.hpp"

#include <algorithm>
#include <cstring>
#include <utility>

using SV::String;

namespace modeler {
namespace {

/// Names that have no mnemonic, such as those of languages and plug-ins' commands, get one.
void addMnemonics(SV::Menu & menu) {
  KivAcceleratorTable letters;
  letters.setAcceleratorsOfMenu(&menu);
  for (unsigned short place = 0; place < menu.GetItemCount(); ++place) {
    unsigned short const id = menu.GetItemId(place);
    String name = menu.GetItemText(id);
    if (id == 0 || std::strchr(name.c_str(), '~') != nullptr)
      continue;
    letters.AccelerateString(name);
    menu.SetItemText(id, name);
  }
}

bool isSame(Commands const & one, Commands const & other) {
  return std::equal(one.begin(), one.end(), other.begin(), other.end(),
                    [](Command const & a, Command const & b) { return a.id == b.id; });
}

} // namespace

Menus::Menus() {
  AddMenu(MENU_HELP, Text::MenuHelp);
  AddMenu(MENU_FILE, Text::MenuFile);
  AddMenu(MENU_EDIT, kMenuEdit);
  AddMenu(MENU_RAISE, Text::MenuRaise);
  AddMenu(MENU_WINDOW, Text::MenuWindow);
  AddMenu(MENU_LANGUAGE, Text::MenuLanguage);
  bar_.ChangeSelectHdl([this](unsigned short id) { Choose(id); });
  keys_.PushSelectHdl([this](SV::Accelerator * keys) {
    Choose(keys->GetCurItemId());
    return 1L;
  });
  SV::Application::InsertAccel(&keys_);
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
    keys_.InsertItem(command.id, command.key);
    commands_.push_back(std::move(command));
  }
  Refresh();
}

void Menus::AddVariable(Item menu, std::function<Commands()> commands) {
  SV::PopupMenu & popup = popups_.at(menu);
  popup.InsertSeparator();
  variables_.push_back({menu, popup.GetItemCount(), std::move(commands), {}});
  Refresh();
}

void Menus::show(Command const & command, SV::Menu & menu) {
  menu.SetItemText(command.id, command.name());
  menu.CheckItem(command.id, command.isChecked());
  menu.EnableItem(command.id, command.isEnabled());
}

void Menus::refresh(Variable & variable, SV::Menu & menu) {
  Commands commands = variable.give();
  if (!isSame(commands, variable.commands)) {
    while (menu.GetItemCount() > variable.position)
      menu.RemoveItem(variable.position);
    for (Command const & command : commands)
      menu.InsertItem(command.id, command.name());
  }
  variable.commands = std::move(commands);
  for (Command const & command : variable.commands)
    show(command, menu);
}

void Menus::Refresh() {
  for (Title const & title : titles_)
    bar_.SetItemText(title.menu, text(title.text));
  for (Command const & command : commands_)
    show(command, popups_.at(command.menu));
  for (Variable & variable : variables_)
    refresh(variable, popups_.at(variable.menu));
  for (auto & [item, menu] : popups_)
    addMnemonics(menu);
  if (refreshed_)
    refreshed_();
}

Command const * Menus::find(unsigned short id) const {
  auto const findIn = [id](Commands const & commands) {
    auto const place = std::find_if(commands.begin(), commands.end(), [id](Command const & c) { return c.id == id; });
    return place != commands.end() ? &*place : nullptr;
  };
  Command const * found = findIn(commands_);
  for (auto variable = variables_.begin(); found == nullptr && variable != variables_.end(); ++variable)
    found = findIn(variable->commands);
  return found;
}

ISequence<Menus::Key> Menus::GetKeys() const {
  ISequence<Key> keys;
  for (Command const & command : commands_) {
    String const name = command.name();
    if (char const * const tab = std::strchr(name.c_str(), '\t'))
      keys.push_back({tab + 1, plain(name)});
  }
  return keys;
}

String Menus::GetName(unsigned short id) const {
  Command const * const command = find(id);
  return command != nullptr ? command->name() : String();
}

bool Menus::IsChecked(unsigned short id) const {
  Command const * const command = find(id);
  return command != nullptr && command->isChecked();
}

void Menus::Choose(unsigned short id) {
  Command const * const command = find(id);
  if (command == nullptr || !command->isEnabled())
    return;
  // A command may end the program, or change the commands.
  std::function<void()> const execute = command->execute;
  execute();
  Refresh();
}

} // namespace modeler
