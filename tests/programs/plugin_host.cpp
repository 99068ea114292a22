// plugin_host [-plug_log] WORD...: loads plug-ins, prints the result of each, and ends without discarding them.
//
//   -own   libraries are not searched for in the working folder or in PATH
//   all    what lies in its folder of plug-ins; the result is how many there are then
//   PATH   that library

#include "acmdline.hpp"
#include "aplugin.hpp"
#include "tools/winapi.hpp"

#include <cstdio>
#include <cstring>

int main(int count, char ** words) {
  KivCmdline::init(count, words, true, "log");
  KivPluginManager & manager = KivPluginManager::Instance();
  for (int i = 1; i < count; ++i) {
    if (std::strcmp(words[i], "-own") == 0)
      SetDefaultDllDirectories(LOAD_LIBRARY_SEARCH_DEFAULT_DIRS);
    if (words[i][0] == '-')
      continue;
    if (std::strcmp(words[i], "all") == 0) {
      KivBasicPluginList plugins;
      bool const isAny = manager.LoadPlugins();
      manager.GetAllPlugins(plugins, true);
      std::printf("%d %d\n", isAny, static_cast<int>(plugins.size()));
    } else {
      std::printf("%d\n", manager.LoadSinglePlugin(words[i]));
    }
    std::fflush(stdout);
  }
  return 0;
}
