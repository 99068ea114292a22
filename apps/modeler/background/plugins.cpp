#include "background/plugins.hpp"

#include "sdk/scriptengine.hpp"
#include "texts/plugintexts.hpp"

using SV::String;

namespace modeler {
namespace {

constexpr char kSeparator = ';';

String baseName(String const & file) {
  String folder;
  String name;
  String base;
  String extension;
  KivSystemFileManager::splitFileName(file, folder, name, base, extension, false);
  return base;
}

void addCommands(KivPluginKivScript const & plugin, ISequence<String> & commands) {
  ISequence<String> names;
  Kiv_SplitIntoTokens(plugin.GetAllCommands(kSeparator).c_str(), kSeparator, names);
  for (String const & name : names)
    if (name.Len() > 0)
      commands.push_back(name);
}

} // namespace

void Plugins::Load(Journal & journal) {
  KivPluginManager & manager = KivPluginManager::Instance();
  manager.LoadPlugins();
  KivBasicPluginList plugins;
  manager.GetAllPlugins(plugins, true);
  for (KivBasicPlugin * const plugin : plugins) {
    String const file = plugin->getPluginFilename();
    entries_.push_back({baseName(file), plugin->getPluginName(), file});
    journal.Add("plug-in: " + plugin->getPluginName() + ": " + file);
    if (plugin->getPluginType() == KIV_PLUGIN_KIVSCRIPT)
      addCommands(static_cast<KivPluginKivScript const &>(*plugin), commands_);
  }
}

ISequence<Fact> Plugins::Facts() const {
  ISequence<Fact> facts;
  for (Entry const & entry : entries_)
    facts.push_back({filled(kPluginOfName, entry.name), entry.kind + ", " + entry.file});
  if (facts.empty())
    facts.push_back({text(kPlugins), text(kNoPlugins)});
  return facts;
}

bool Plugins::Execute(String const & command, String const & argument, String & answer) const {
  KivBasicPluginList scripts;
  KivPluginManager::Instance().GetAllPluginsOfType(KIV_PLUGIN_KIVSCRIPT, scripts, true);
  for (KivBasicPlugin * const each : scripts) {
    auto const & script = static_cast<KivPluginKivScript const &>(*each);
    if (!script.IsCommandExisting(command.c_str()))
      continue;
    KivLeoParser parser(argument);
    KivScriptResult result;
    bool const isExecuted = script.handleRequest(command.c_str(), parser, result);
    answer = result.GetText();
    return isExecuted;
  }
  return false;
}

} // namespace modeler
