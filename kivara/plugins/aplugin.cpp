#include "aplugin.hpp"

#include "aappinfo.hpp"

using SV::String;

KivBasicPlugin::KivBasicPlugin(KivPluginType pluginType, char const * pluginName, KivDLLLoader * ownedLoader)
    : type(pluginType), loader(ownedLoader), name(pluginName) {}

KivBasicPlugin::~KivBasicPlugin() { delete loader; }

KivPluginType KivBasicPlugin::getPluginType() const { return type; }
String KivBasicPlugin::getPluginName() const { return name; }
String KivBasicPlugin::getPluginFilename() const { return loader->getFilename(); }

KivPluginGeneral::KivPluginGeneral(KivDLLLoader * ownedLoader)
    : KivBasicPlugin(KIV_PLUGIN_GENERAL, "General", ownedLoader) {}

bool KivPluginGeneral::init() { return true; }

KivPluginKivScript::KivPluginKivScript(KivDLLLoader * ownedLoader)
    : KivBasicPlugin(KIV_PLUGIN_KIVSCRIPT, "KivScript", ownedLoader) {}

template <class Function> bool KivPluginKivScript::_lookUp(Function *& function, char const * exportedName) {
  function = reinterpret_cast<Function *>(loader->_getGenericFunctionPtr(exportedName));
  return function != nullptr;
}

bool KivPluginKivScript::init() {
  if (!_lookUp(executionType_, "KivPluginFctKivScriptGetExecutionType") ||
      !_lookUp(messagePortName_, "KivPluginFctKivScriptGetMessagePortName") ||
      !_lookUp(handleMessage_, "KivPluginFctKivScriptHandleRequestMsg") ||
      !_lookUp(handleDirect_, "KivPluginFctKivScriptHandleRequestDirect") ||
      !_lookUp(isCommandExisting_, "KivPluginFctKivScriptIsCommandExisting") ||
      !_lookUp(allCommands_, "KivPluginFctKivScriptGetAllCommands"))
    return false;
  return Kiv_IsKVTK() || isAccessibleInCurrentApp();
}

KivPluginKivScriptExecutionType KivPluginKivScript::getExecutionType() const { return executionType_(); }
char const * KivPluginKivScript::getMessagePortName() const { return messagePortName_(); }

bool KivPluginKivScript::handleRequest(char const * command, KivLeoParser & parser, KivMessage * message) const {
  return handleMessage_(command, parser, message);
}

bool KivPluginKivScript::handleRequest(char const * command, KivLeoParser & parser, KivScriptResult & result) const {
  return handleDirect_(command, parser, result);
}

bool KivPluginKivScript::IsCommandExisting(char const * command) const { return isCommandExisting_(command); }

String KivPluginKivScript::GetAllCommands(char separator) const {
  String commands;
  allCommands_(commands, separator);
  return commands;
}

bool KivPluginKivScript::isAccessibleInCurrentApp() const {
  if (Kiv_IsWS())
    return true;
  switch (getExecutionType()) {
  case KIV_PLUGIN_KIVSCRIPT_RUNTIME: return Kiv_IsREETK();
  case KIV_PLUGIN_KIVSCRIPT_TOOLKIT: return Kiv_IsKVTK();
  case KIV_PLUGIN_KIVSCRIPT_BOTH: return Kiv_IsREETK() || Kiv_IsKVTK();
  }
  return false;
}
