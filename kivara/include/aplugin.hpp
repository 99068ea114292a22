#pragma once
/// \file
/// Plug-ins: dynamic libraries in the folder "plugins" below the program, built for exactly this version of the library.
///
/// \code
///   KivPluginManager::Instance().LoadPlugins();
///
///   KivBasicPluginList plugins;
///   KivPluginManager::Instance().GetAllPluginsOfType(KIV_PLUGIN_KIVSCRIPT, plugins, true);
///   for (KivBasicPlugin * const plugin : plugins)
///     offer(static_cast<KivPluginKivScript *>(plugin)->GetAllCommands(';'));
/// \endcode
///
/// What a plug-in exports is in aplugin_exports.hpp. A general plug-in has nothing beyond being loaded: its work begins with
/// its static objects. A script plug-in offers commands to the product's script language.
///
/// With the option "-plug_log", each step is written to the file "_plugin_manager.log" in the current folder.
///
/// All of it is for the main thread, and nothing is locked. A plug-in's code runs on the calling thread. An exception or a
/// fault in a plug-in's functions is not caught, and the plug-in then stays loaded without being in the list.

#include "adll.hpp"
#include "export.hpp"
#include "tools/containers.hpp"
#include "tools/string.hpp"

class KivBasicFileLogger;

/// \name Script engine
/// Classes of the product's script engine. The library only passes them on.
/// @{
class KivLeoParser;
class KivMessage;
class KivScriptResult;
/// @}

/// The kind of a plug-in.
enum KivPluginType : int {
  KIV_PLUGIN_GENERAL = 101,
  KIV_PLUGIN_KIVSCRIPT = 102,
};

/// The outcome of one attempt to load a plug-in. After any but the first, nothing of it stays loaded.
enum KivPluginLoadResult : int {
  KIV_PLUGIN_LOADED = 78,        ///< it is loaded and in the list
  KIV_PLUGIN_NOT_LOADED = 79,    ///< the system could not load the library
  KIV_PLUGIN_ENTRY_MISSING = 80, ///< version or type cannot be asked for
  KIV_PLUGIN_NOT_VALID = 81,     ///< it was built for another version, or its type is unknown
  KIV_PLUGIN_DECLINED = 82,      ///< a script plug-in that lacks a function, or is not for this kind of program
};

/// Where a script plug-in may run.
enum KivPluginKivScriptExecutionType : int {
  KIV_PLUGIN_KIVSCRIPT_RUNTIME = 42, ///< in programs that run what was modelled (Kiv_IsREETK)
  KIV_PLUGIN_KIVSCRIPT_TOOLKIT = 43, ///< in programs that make models (Kiv_IsKVTK)
  KIV_PLUGIN_KIVSCRIPT_BOTH = 44,    ///< in both
};

/// A plug-in. It owns its library, which is unloaded with it.
class KIV_API KivBasicPlugin {
public:
  KivBasicPlugin(KivBasicPlugin const &) = delete;
  KivBasicPlugin & operator=(KivBasicPlugin const &) = delete;
  virtual ~KivBasicPlugin();

  /// Prepares the plug-in.
  /// \return false if it cannot be used in this program
  virtual bool init() = 0;

  KivPluginType getPluginType() const;  ///< its kind
  SV::String getPluginName() const;     ///< the name of its kind: "General" or "KivScript"
  SV::String getPluginFilename() const; ///< the path that it was loaded from

protected:
  /// \param ownedLoader  from new, with a library loaded
  KivBasicPlugin(KivPluginType pluginType, char const * pluginName, KivDLLLoader * ownedLoader);

  KivPluginType type;
  KivDLLLoader * loader;
  SV::String name;
};

/// Plug-ins that somebody else owns: those from the manager are valid until DiscardPlugins.
using KivBasicPluginList = ISequence<KivBasicPlugin *>;

/// A plug-in that is only loaded.
class KIV_API KivPluginGeneral : public KivBasicPlugin {
public:
  /// \param ownedLoader  from new, with a library loaded
  explicit KivPluginGeneral(KivDLLLoader * ownedLoader);

  /// Always true.
  bool init() override;
};

/// A plug-in with commands of the script language. Except for init, all its operations may be called only after an init
/// that answered true; each calls the plug-in's function of that name with the arguments as they are.
class KIV_API KivPluginKivScript : public KivBasicPlugin {
public:
  /// \param ownedLoader  from new, with a library loaded
  explicit KivPluginKivScript(KivDLLLoader * ownedLoader);

  /// Looks up the plug-in's functions. False if one is missing, or if the plug-in is not for this kind of program: a program
  /// that makes models takes all, any other one those that isAccessibleInCurrentApp allows.
  bool init() override;

  KivPluginKivScriptExecutionType getExecutionType() const; ///< where it may run

  /// The name under which the script language sends requests to it, owned by the plug-in.
  char const * getMessagePortName() const;

  /// Has a command executed.
  /// \param command  its name
  /// \param parser   gives the plug-in what follows the command
  /// \return what the plug-in answers: whether it has executed the command
  /// @{
  bool handleRequest(char const * command, KivLeoParser & parser, KivMessage * message) const;
  bool handleRequest(char const * command, KivLeoParser & parser, KivScriptResult & result) const;
  /// @}

  bool IsCommandExisting(char const * command) const; ///< whether the plug-in has that command

  /// The names of all its commands with the separator between them.
  SV::String GetAllCommands(char separator) const;

  /// Whether the execution type allows this program: always in a web service, otherwise by the kind of the program. A type
  /// other than the three allows none.
  bool isAccessibleInCurrentApp() const;

private:
  template <class Function> bool _lookUp(Function *& function, char const * exportedName);

  KivPluginKivScriptExecutionType (*executionType_)() = nullptr;
  char const * (*messagePortName_)() = nullptr;
  bool (*handleMessage_)(char const *, KivLeoParser &, KivMessage *) = nullptr;
  bool (*handleDirect_)(char const *, KivLeoParser &, KivScriptResult &) = nullptr;
  bool (*isCommandExisting_)(char const *) = nullptr;
  void (*allCommands_)(SV::String &, char) = nullptr;
};

/// Finds, checks and keeps the plug-ins of the process.
class KIV_API KivPluginManager {
public:
  /// The manager of the process, made by the first call, which needs the command line to be read. It discards its plug-ins
  /// at the end of the process.
  static KivPluginManager & Instance();

  /// That manager if there is one and it has not been destroyed yet, otherwise null: for reports of a failing program.
  static KivPluginManager const * _Existing();

  KivPluginManager(KivPluginManager const &) = delete;
  KivPluginManager & operator=(KivPluginManager const &) = delete;
  virtual ~KivPluginManager();

  /// Tries each file "*.dll" of the folder "plugins" below the program, in the byte order of the names; one that fails does
  /// not stop the others. A second call loads all of them once more.
  /// \return whether the list of plug-ins is not empty now
  bool LoadPlugins();

  /// Tries one file.
  KivPluginLoadResult LoadSinglePlugin(char const * path);

  /// Unloads all plug-ins in the order of loading and empties the list. Lists that were filled from it are invalid then.
  /// \return true
  bool DiscardPlugins();

  /// Appends the plug-ins in the order of loading.
  /// \param clearFirst  true: what \p out holds is dropped first
  /// @{
  void GetAllPlugins(KivBasicPluginList & out, bool clearFirst) const;
  void GetAllPluginsOfType(KivPluginType type, KivBasicPluginList & out, bool clearFirst) const;
  /// @}

protected:
  KivPluginManager();

  /// LoadSinglePlugin without its line in the log.
  KivPluginLoadResult _TryToLoadPlugin(char const * path);

  KivBasicPluginList plugins;         ///< owned
  KivBasicFileLogger * log = nullptr; ///< owned; null without the option

private:
  KivPluginLoadResult _load(KivDLLLoader & loader, char const * path) const;
  KivPluginLoadResult _checkVersion(KivDLLLoader & loader) const;
  KivPluginLoadResult _checkType(KivDLLLoader & loader, int & type) const;
  int (*_lookUp(KivDLLLoader & loader, char const * name, char const * indent) const)();
  void _addLog(char const * format, ...) const __attribute__((format(ms_printf, 2, 3)));
};
