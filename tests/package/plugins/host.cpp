// Loads its plug-ins, prints a line for each, and then the log of the plug-ins.

#include "acmdline.hpp"
#include "aplugin.hpp"

#include <cstdio>

class KivLeoParser {};

class KivScriptResult {
public:
  int number = 0;
};

int main(int count, char ** words) {
  KivCmdline::init(count, words, true, "log");
  KivPluginManager & manager = KivPluginManager::Instance();
  manager.LoadPlugins();
  KivBasicPluginList plugins;
  manager.GetAllPlugins(plugins, true);
  for (KivBasicPlugin * const plugin : plugins) {
    std::printf("%s %s\n", plugin->getPluginName().c_str(), plugin->getPluginFilename().c_str());
    if (plugin->getPluginType() != KIV_PLUGIN_KIVSCRIPT)
      continue;
    auto const & script = static_cast<KivPluginKivScript const &>(*plugin);
    KivLeoParser parser;
    KivScriptResult result;
    script.handleRequest("answer", parser, result);
    std::printf("%s: %d\n", script.GetAllCommands(';').c_str(), result.number);
  }
  if (std::FILE * const log = std::fopen("_plugin_manager.log", "rt"))
    for (int c = 0; (c = std::fgetc(log)) != EOF;)
      std::putchar(c);
}
