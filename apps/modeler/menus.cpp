#include "menus.hpp"

#include <utility>

using SV::String;

namespace modeler {

struct Menus::Row {
  SV::PopupMenu Menus::*menu; ///< null: the menu bar
  unsigned short id;          ///< 0: a separator
  Text text;
};

Menus::Row const Menus::kRows[] = {
    {nullptr, MENU_FILE, Text::MenuFile},
    {nullptr, MENU_RAISE, Text::MenuRaise},
    {nullptr, MENU_WINDOW, Text::MenuWindow},
    {nullptr, MENU_LANGUAGE, Text::MenuLanguage},
    {nullptr, MENU_HELP, Text::MenuHelp},
    {&Menus::file_, FILE_OPEN_MODEL, Text::Open},
    {&Menus::file_, FILE_OPEN_SAMPLE, Text::OpenSample},
    {&Menus::file_, FILE_SAVE_AS, Text::SaveAs},
    {&Menus::file_, 0, {}},
    {&Menus::file_, FILE_EXIT, Text::Exit},
    {&Menus::raise_, RAISE_USER, Text::RaiseUser},
    {&Menus::raise_, RAISE_USER_GROUP, Text::RaiseUserGroup},
    {&Menus::window_, WINDOW_START, Text::Start},
    {&Menus::window_, WINDOW_EVENTS, Text::Events},
    {&Menus::window_, 0, {}},
    {&Menus::window_, WINDOW_CASCADE, Text::Cascade},
    {&Menus::window_, WINDOW_TILE, Text::Tile},
    {&Menus::help_, HELP_ABOUT, Text::About},
};

Menus::Menus(std::function<void(unsigned short)> select) {
  for (Row const & row : kRows) {
    SV::Menu & menu = menuOf(row);
    if (row.id == 0)
      menu.InsertSeparator();
    else
      menu.InsertItem(row.id, text(row.text));
  }
  fillLanguages();
  bar_.SetPopupMenu(MENU_FILE, &file_);
  bar_.SetPopupMenu(MENU_RAISE, &raise_);
  bar_.SetPopupMenu(MENU_WINDOW, &window_);
  bar_.SetPopupMenu(MENU_LANGUAGE, &language_);
  bar_.SetPopupMenu(MENU_HELP, &help_);
  bar_.ChangeSelectHdl(std::move(select));
}

/// Each language under its own name, so that a user finds it whatever language is current.
void Menus::fillLanguages() {
  unsigned short item = LANGUAGE_FIRST;
  for (unsigned short const id : KivInternational::GetAvailableLanguages()) {
    String const name = KivInternational::GetNativeLanguageName(id);
    language_.InsertItem(item++, name.Len() > 0 ? name : String(id));
  }
}

SV::Menu & Menus::menuOf(Row const & row) {
  if (row.menu == nullptr)
    return bar_;
  return this->*row.menu;
}

void Menus::Retext() {
  for (Row const & row : kRows) {
    SV::Menu & menu = menuOf(row);
    if (row.id != 0)
      menu.SetItemText(row.id, text(row.text));
  }
}

} // namespace modeler
