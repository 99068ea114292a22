// A plug-in that needs another library.

#include "aplugin_exports.hpp"
#include "kivara_version.hpp"

extern "C" __declspec(dllimport) int answerOfNeeded();

int KivPluginFctGetVersion() { return answerOfNeeded() == 42 ? KIVARA_VERSION_IDENTIFIER : 0; }
int KivPluginFctGetType() { return KIV_PLUGIN_GENERAL; }
