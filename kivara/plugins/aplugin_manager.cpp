#include "aplugin.hpp"

#include "aappinfo.hpp"
#include "acmdline.hpp"
#include "alog.hpp"
#include "aplatfrm.hpp"
#include "base/boundedtext.hpp"
#include "handles/handle.hpp"
#include "tools/winapi.hpp"

#include <cstdarg>
#include <set>
#include <utility>

using SV::String;

namespace {

constexpr char kLogOption[] = "plug_log";
constexpr char kLogName[] = "_plugin_manager.log";
constexpr char kFolder[] = "plugins\\";
constexpr char kVersionFunction[] = "KivPluginFctGetVersion";
constexpr char kTypeFunction[] = "KivPluginFctGetType";

KivPluginManager const * existing = nullptr;

/// While it lives, the system shows no box on this thread when a library depends on one that is missing.
class NoSystemBoxes {
public:
  NoSystemBoxes() { SetThreadErrorMode(GetThreadErrorMode() | SEM_FAILCRITICALERRORS, &former_); }
  NoSystemBoxes(NoSystemBoxes const &) = delete;
  NoSystemBoxes & operator=(NoSystemBoxes const &) = delete;
  ~NoSystemBoxes() { SetThreadErrorMode(former_, nullptr); }

private:
  DWORD former_ = 0;
};

bool isFolder(String const & path) {
  DWORD const attributes = GetFileAttributesA(path.c_str());
  return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

/// In byte order, whatever order the folder lists them in.
std::set<String> librariesIn(String const & folder) {
  std::set<String> paths;
  if (!isFolder(folder))
    return paths;
  WIN32_FIND_DATAA found;
  handles::FolderSearch const search(FindFirstFileA((folder + "*.dll").c_str(), &found));
  for (bool isFound = bool(search); isFound; isFound = FindNextFileA(search.get(), &found) != FALSE)
    if (String const path = folder + static_cast<char const *>(found.cFileName); !isFolder(path))
      paths.insert(path);
  return paths;
}

} // namespace

KivPluginManager & KivPluginManager::Instance() {
  struct TheManager : KivPluginManager {
    TheManager() { existing = this; }
    ~TheManager() override { existing = nullptr; }
  };
  static TheManager theManager;
  return theManager;
}

KivPluginManager const * KivPluginManager::_Existing() { return existing; }

KivPluginManager::KivPluginManager() {
  if (!KivCmdline::Instance().isFlag(kLogOption))
    return;
  log = new KivBasicFileLogger(true, false, 0);
  if (!log->open(kLogName, false))
    delete std::exchange(log, nullptr);
  _addLog("Start logging\n");
}

KivPluginManager::~KivPluginManager() {
  DiscardPlugins();
  delete log;
}

bool KivPluginManager::LoadPlugins() {
  _addLog("KivPluginManager::LoadPlugins\n");
  for (String const & path : librariesIn(Kiv_GetProgramPath(true) + kFolder))
    _TryToLoadPlugin(path.c_str());
  return !plugins.empty();
}

KivPluginLoadResult KivPluginManager::LoadSinglePlugin(char const * path) {
  _addLog("KivPluginManager::LoadSinglePlugin (%s)\n", kivara::orEmpty(path));
  return _TryToLoadPlugin(path);
}

bool KivPluginManager::DiscardPlugins() {
  _addLog("KivPluginManager::DiscardPlugins\n");
  for (KivBasicPlugin * const plugin : std::exchange(plugins, {}))
    delete plugin;
  return true;
}

void KivPluginManager::GetAllPlugins(KivBasicPluginList & out, bool clearFirst) const {
  _addLog("KivPluginManager::GetAllPlugins\n");
  if (clearFirst)
    out.clear();
  out.insert(out.end(), plugins.begin(), plugins.end());
  _addLog("  Got %d plugins\n", static_cast<int>(out.size()));
}

void KivPluginManager::GetAllPluginsOfType(KivPluginType type, KivBasicPluginList & out, bool clearFirst) const {
  _addLog("KivPluginManager::GetAllPluginsOfType (%d)\n", type);
  if (clearFirst)
    out.clear();
  for (KivBasicPlugin * const plugin : plugins)
    if (plugin->getPluginType() == type)
      out.push_back(plugin);
  _addLog("  Got %d plugins\n", static_cast<int>(out.size()));
}

KivPluginLoadResult KivPluginManager::_TryToLoadPlugin(char const * path) {
  NoSystemBoxes const noBoxes;
  _addLog("KivPluginManager::_TryToLoadPlugin (%s)\n", kivara::orEmpty(path));
  // No scope owns the loader: an exception that an entry point throws needs the plug-in's code until it is caught.
  auto * const loader = new KivDLLLoader;
  KivPluginLoadResult result = _load(*loader, path);
  if (result == KIV_PLUGIN_LOADED)
    result = _checkVersion(*loader);
  int type = 0;
  if (result == KIV_PLUGIN_LOADED)
    result = _checkType(*loader, type);
  if (result != KIV_PLUGIN_LOADED) {
    delete loader;
    return result;
  }
  KivBasicPlugin * plugin = nullptr;
  if (type == KIV_PLUGIN_GENERAL)
    plugin = new KivPluginGeneral(loader);
  else
    plugin = new KivPluginKivScript(loader);
  if (!plugin->init()) {
    _addLog("-           Failed to init plugin - maybe not for this application!\n");
    delete plugin;
    return KIV_PLUGIN_DECLINED;
  }
  _addLog("+           Plugin successfully loaded!\n");
  plugins.push_back(plugin);
  return KIV_PLUGIN_LOADED;
}

KivPluginLoadResult KivPluginManager::_load(KivDLLLoader & loader, char const * path) const {
  // A library can refuse without an error code.
  bool const isLoaded = loader.load(path) && loader.isLoaded();
  _addLog(isLoaded ? "+ DLL loaded\n" : "- DLL could not be loaded!\n");
  return isLoaded ? KIV_PLUGIN_LOADED : KIV_PLUGIN_NOT_LOADED;
}

KivPluginLoadResult KivPluginManager::_checkVersion(KivDLLLoader & loader) const {
  auto * const getVersion = _lookUp(loader, kVersionFunction, "   ");
  if (getVersion == nullptr)
    return KIV_PLUGIN_ENTRY_MISSING;
  int const version = getVersion();
  if (version != Kiv_GetVersionIdentifier()) {
    _addLog("-     This plugin is for another version (%d)!\n", version);
    return KIV_PLUGIN_NOT_VALID;
  }
  _addLog("+     Version matches\n");
  return KIV_PLUGIN_LOADED;
}

KivPluginLoadResult KivPluginManager::_checkType(KivDLLLoader & loader, int & type) const {
  auto * const getType = _lookUp(loader, kTypeFunction, "       ");
  if (getType == nullptr)
    return KIV_PLUGIN_ENTRY_MISSING;
  type = getType();
  if (type != KIV_PLUGIN_GENERAL && type != KIV_PLUGIN_KIVSCRIPT) {
    _addLog("-         Its not a valid plugin type (%d)\n", type);
    return KIV_PLUGIN_NOT_VALID;
  }
  _addLog("+         Its a valid plugin type\n");
  return KIV_PLUGIN_LOADED;
}

int (*KivPluginManager::_lookUp(KivDLLLoader & loader, char const * name, char const * indent) const)() {
  auto * const function = reinterpret_cast<int (*)()>(loader._getGenericFunctionPtr(name));
  _addLog(function != nullptr ? "+%sRetrieved '%s'\n" : "-%sCould not retrieve '%s'\n", indent, name);
  return function;
}

void KivPluginManager::_addLog(char const * format, ...) const {
  if (log == nullptr)
    return;
  va_list arguments;
  va_start(arguments, format);
  log->vaddText(format, arguments);
  va_end(arguments);
}
