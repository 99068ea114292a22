// A script plug-in with one command.

#include "aplugin_exports.hpp"

#include <cstring>

class KivScriptResult {
public:
  int number;
};

KivPluginKivScriptExecutionType KivPluginFctKivScriptGetExecutionType() { return KIV_PLUGIN_KIVSCRIPT_TOOLKIT; }
char const * KivPluginFctKivScriptGetMessagePortName() { return "port"; }
bool KivPluginFctKivScriptHandleRequestMsg(char const *, KivLeoParser &, KivMessage *) { return false; }
bool KivPluginFctKivScriptHandleRequestDirect(char const *, KivLeoParser &, KivScriptResult & result) {
  result.number = 42;
  return true;
}
bool KivPluginFctKivScriptIsCommandExisting(char const * command) { return std::strcmp(command, "answer") == 0; }
void KivPluginFctKivScriptGetAllCommands(SV::String & out, char) { out += "answer"; }
