// A plug-in whose function fails at a line that it prints before.

#include "aplugin_exports.hpp"
#include "crash_lines.hpp"
#include "kivara_version.hpp"

int KivPluginFctGetVersion() { return KIVARA_VERSION_IDENTIFIER; }
int KivPluginFctGetType() { return KIV_PLUGIN_GENERAL; }

extern "C" __declspec(dllexport) void failInPlugin() {
  KIVTEST_FAULT();
  std::puts("still there");
}
