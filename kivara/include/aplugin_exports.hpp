#pragma once
/// \file
/// The functions that a plug-in exports, declared for the compiler to compare with their definitions. kivara_add_plugin of the
/// CMake package defines the first two; the others are for the author of a script plug-in, who needs all six.
///
/// \code
///   #include "aplugin_exports.hpp"
///
///   bool KivPluginFctKivScriptIsCommandExisting(char const * command) { return std::strcmp(command, "stamp") == 0; }
/// \endcode
///
/// All of them are called on the thread that uses the plug-in manager. An exception that leaves one reaches the program.

#include "aplugin.hpp"

/// Exported where KIVARA_PLUGIN is defined, as kivara_add_plugin does.
#ifdef KIVARA_PLUGIN
#define KIVARA_PLUGIN_API extern "C" __declspec(dllexport)
#else
#define KIVARA_PLUGIN_API extern "C"
#endif

/// \name Every plug-in
/// @{

/// The version that the plug-in was built for: KIVARA_VERSION_IDENTIFIER.
KIVARA_PLUGIN_API int KivPluginFctGetVersion();

/// A KivPluginType.
KIVARA_PLUGIN_API int KivPluginFctGetType();
/// @}

/// \name Script plug-ins
/// See the operations of KivPluginKivScript.
/// @{

/// Where it may run. Asked at each start, unless the program makes models: such a program takes every script plug-in.
KIVARA_PLUGIN_API KivPluginKivScriptExecutionType KivPluginFctKivScriptGetExecutionType();

/// A string that stays valid while the plug-in is loaded.
KIVARA_PLUGIN_API char const * KivPluginFctKivScriptGetMessagePortName();

/// Execute a command and say whether it was executed.
KIVARA_PLUGIN_API bool KivPluginFctKivScriptHandleRequestMsg(char const * command, KivLeoParser & parser,
                                                             KivMessage * message);
KIVARA_PLUGIN_API bool KivPluginFctKivScriptHandleRequestDirect(char const * command, KivLeoParser & parser,
                                                                KivScriptResult & result);

/// Whether there is a command of that name.
KIVARA_PLUGIN_API bool KivPluginFctKivScriptIsCommandExisting(char const * command);

/// Writes the names of all commands into \p out, which is empty, with the separator between them.
KIVARA_PLUGIN_API void KivPluginFctKivScriptGetAllCommands(SV::String & out, char separator);
/// @}
