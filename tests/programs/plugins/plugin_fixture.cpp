// A plug-in of the tests. Environment variables say what it answers:
//
//   KIVARA_PLUGIN_VERSION    the version, the current one without it; "throw" and "fault" for a function that does that
//   KIVARA_PLUGIN_TYPE       the type, 101 without it
//   KIVARA_PLUGIN_EXECUTION  the execution type, 44 without it
//   KIVARA_PLUGIN_LOADING    "refuse", "throw" or "fault" for what happens while it is loaded
//   KIVARA_PLUGIN_ERRORMODE  a variable that receives the error mode of the thread that loads it
//
// The same source makes plug-ins that lack a function, each by a definition.

#include "aplugin_exports.hpp"
#include "kivara_version.hpp"
#include "plugins/script_agreement.hpp"
#include "tools/winapi.hpp"

#include <cstdlib>
#include <cstring>
#include <string>

namespace {

std::string setting(char const * name, char const * otherwise = "") {
  char value[64] = "";
  return GetEnvironmentVariableA(name, value, sizeof value) != 0 ? value : otherwise;
}

int number(char const * name, int otherwise) {
  std::string const text = setting(name);
  return text.empty() ? otherwise : std::atoi(text.c_str());
}

[[gnu::no_sanitize_undefined]] void misbehave(std::string const & how) {
  if (how == "throw")
    throw 42;
  if (how == "fault")
    *static_cast<int volatile *>(nullptr) = 1;
}

} // namespace

BOOL WINAPI DllMain(HINSTANCE, DWORD reason, void *) {
  if (reason != DLL_PROCESS_ATTACH)
    return TRUE;
  SetEnvironmentVariableA("KIVARA_PLUGIN_ERRORMODE", std::to_string(GetThreadErrorMode()).c_str());
  std::string const how = setting("KIVARA_PLUGIN_LOADING");
  misbehave(how);
  return how != "refuse";
}

#ifndef WITHOUT_VERSION
int KivPluginFctGetVersion() {
  misbehave(setting("KIVARA_PLUGIN_VERSION"));
  return number("KIVARA_PLUGIN_VERSION", KIVARA_VERSION_IDENTIFIER);
}
#endif

#ifndef WITHOUT_TYPE
int KivPluginFctGetType() { return number("KIVARA_PLUGIN_TYPE", KIV_PLUGIN_GENERAL); }
#endif

#ifndef WITHOUT_EXECUTION
KivPluginKivScriptExecutionType KivPluginFctKivScriptGetExecutionType() {
  return static_cast<KivPluginKivScriptExecutionType>(number("KIVARA_PLUGIN_EXECUTION", KIV_PLUGIN_KIVSCRIPT_BOTH));
}
#endif

#ifndef WITHOUT_PORT
char const * KivPluginFctKivScriptGetMessagePortName() { return "test port"; }
#endif

#ifndef WITHOUT_MESSAGE
bool KivPluginFctKivScriptHandleRequestMsg(char const * command, KivLeoParser & parser, KivMessage * message) {
  if (message != nullptr)
    *message = {command, &parser};
  return parser.answer;
}
#endif

#ifndef WITHOUT_DIRECT
bool KivPluginFctKivScriptHandleRequestDirect(char const * command, KivLeoParser & parser, KivScriptResult & result) {
  result.command = command;
  result.parser = &parser;
  return parser.answer;
}
#endif

#ifndef WITHOUT_EXISTING
bool KivPluginFctKivScriptIsCommandExisting(char const * command) { return std::strcmp(command, "first") == 0; }
#endif

#ifndef WITHOUT_COMMANDS
void KivPluginFctKivScriptGetAllCommands(SV::String & out, char separator) {
  out = out + "first" + SV::String(separator) + "second"; // what is in it already is seen
}
#endif
