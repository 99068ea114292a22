#include "commands/program/plugincommands.hpp"

#include "texts/plugintexts.hpp"

using SV::String;

namespace modeler {

PluginCommands::PluginCommands(SV::MDIFrame & frame, Menus & menus, Plugins const & plugins,
                               Documents const & documents, Journal & journal)
    : frame_(frame), plugins_(plugins), documents_(documents), journal_(journal) {
  if (plugins_.Commands().empty())
    return;
  menus.AddMenu(MENU_PLUGINS, kMenuCommands);
  Commands commands;
  unsigned short id = PLUGIN_FIRST;
  for (String const & command : plugins_.Commands())
    commands.push_back({MENU_PLUGINS, id++, [command] { return command; }, [this, command] { execute(command); }});
  menus.Add(std::move(commands));
}

void PluginCommands::execute(String const & command) {
  String answer;
  bool const isExecuted = plugins_.Execute(command, documents_.GetLastFile(), answer);
  journal_.Add("command: " + command + ": " + (isExecuted ? answer : String("not executed")));
  if (!isExecuted) {
    KivWarningBox(&frame_, SV::WB_OK, filled(kCommandFailed, command)).Execute();
    return;
  }
  KivInfoBox box(&frame_, answer);
  box.SetText(command);
  box.Execute();
}

} // namespace modeler
