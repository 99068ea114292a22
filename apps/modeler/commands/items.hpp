#pragma once
/// \file
/// The identifiers of the menus and their items.

namespace modeler {

enum Item : unsigned short {
  MENU_FILE = 1,
  MENU_WINDOW = 2,
  MENU_HELP = 3,
  MENU_RAISE = 4,
  MENU_LANGUAGE = 5,
  MENU_PLUGINS = 6,
  MENU_VIEW = 7,
  MENU_EDIT = 8,
  MENU_DIAGNOSTICS = 9,
  FILE_EXIT = 101,
  FILE_OPEN_MODEL = 102, ///< FILE_OPEN is a macro of the platform
  FILE_OPEN_SAMPLE = 103,
  FILE_SAVE_AS = 104,
  FILE_PRINT_TEXT = 110,
  FILE_PRINT_DRAWING = 111,
  FILE_EXPORT_XML = 112,
  FILE_EXPORT_PICTURE = 113,
  WINDOW_MINIMISE = 121,
  FILE_TRIAL_RUN = 122,
  EDIT_COPY = 131,
  EDIT_PASTE = 132,
  WINDOW_START = 201,
  WINDOW_CASCADE = 202,
  WINDOW_TILE = 203,
  WINDOW_EVENTS = 204,
  WINDOW_LIST_FIRST = 210, ///< one for each of the open windows, as far as there is room
  WINDOW_LIST_LAST = 218,
  HELP_ABOUT = 301,
  HELP_KEYS = 302,
  DIAGNOSTICS_WATCH = 311,
  DIAGNOSTICS_REQUEST = 321,
  DIAGNOSTICS_AT_WORK = 331,
  HELP_CRASH = 341,
  RAISE_USER = 401,
  RAISE_USER_GROUP = 402,
  LANGUAGE_FIRST = 501, ///< one for each installed language, in the order of the list
  VIEW_TOOLBAR = 601,
  VIEW_OUTLINE = 602,
  VIEW_NOTES = 603,
  VIEW_STATUSBAR = 604,
  VIEW_STYLES = 605,
  VIEW_NEXT = 606,
  VIEW_CLASSIC = 607, ///< the themes, in the order of the library
  VIEW_MODERN = 608,
  ANALYSIS_TIMES = 701,
  EDIT_FIND = 711,
  EDIT_FIND_NEXT = 712,
  PLUGIN_FIRST = 1001 ///< one for each command of a script plug-in
};

} // namespace modeler
