#pragma once
/// \file
/// The menu bar, whose texts follow the language.

#include "sv/mdi.hpp"
#include "sv/menu.hpp"
#include "texts.hpp"

#include <functional>

namespace modeler {

enum Item : unsigned short {
  MENU_FILE = 1,
  MENU_WINDOW = 2,
  MENU_HELP = 3,
  MENU_RAISE = 4,
  MENU_LANGUAGE = 5,
  FILE_EXIT = 101,
  FILE_OPEN_MODEL = 102, ///< FILE_OPEN is a macro of the platform
  FILE_OPEN_SAMPLE = 103,
  FILE_SAVE_AS = 104,
  WINDOW_START = 201,
  WINDOW_CASCADE = 202,
  WINDOW_TILE = 203,
  WINDOW_EVENTS = 204,
  HELP_ABOUT = 301,
  RAISE_USER = 401,
  RAISE_USER_GROUP = 402,
  LANGUAGE_FIRST = 501 ///< one for each installed language, in the order of the list
};

class Menus {
public:
  /// \param select  called with the item that the user chooses
  explicit Menus(std::function<void(unsigned short)> select);
  Menus(Menus const &) = delete;
  Menus & operator=(Menus const &) = delete;

  SV::MenuBar & GetBar() { return bar_; }

  /// Sets all texts again, in the current language.
  void Retext();

private:
  struct Row;
  static Row const kRows[];
  SV::Menu & menuOf(Row const & row);
  void fillLanguages();

  SV::PopupMenu file_;
  SV::PopupMenu raise_;
  SV::PopupMenu window_;
  SV::PopupMenu language_;
  SV::PopupMenu help_;
  SV::MenuBar bar_;
};

} // namespace modeler
