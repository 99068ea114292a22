#include "commands/program/lookcommands.hpp"

#include "texts/viewtexts.hpp"

using SV::String;

namespace modeler {
namespace {

Command themeCommand(Settings const & settings, unsigned short id, Text name, char const * theme) {
  Command command = {MENU_VIEW, id, named(name), [&settings, theme] { chooseTheme(settings, theme); }};
  command.isChecked = [theme] { return KivThemeManager::CurrentTheme().GetName() == String(theme); };
  return command;
}

} // namespace

Commands lookCommands(Settings const & settings) {
  auto const isOn = [] { return KivThemeManager::Instance().IsVisualStylesXPEnabled(); };
  Command styles = {MENU_VIEW, VIEW_STYLES, named(kVisualStyles),
                    [&settings, isOn] { useVisualStyles(settings, !isOn()); }};
  styles.isChecked = isOn;
  return {separator(MENU_VIEW), themeCommand(settings, VIEW_CLASSIC, kClassic, "Classic"),
          themeCommand(settings, VIEW_MODERN, kModern, "Modern"), styles};
}

} // namespace modeler
