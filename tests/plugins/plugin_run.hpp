#pragma once
/// \file
/// What the tests of plug-ins share: the manager with or without its log, and plug-ins as the variables of the fixture say.

#include "aappinfo.hpp"
#include "acmdline.hpp"
#include "aplugin.hpp"
#include "support/data/files.hpp"
#include "tools/winapi.hpp"

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>
#include <vector>

namespace kivtest {

using Lines = std::vector<std::string>;

inline void initCommandLine(bool withLog) {
  static char program[] = "program.exe";
  static char option[] = "-plug_log";
  static char * words[] = {program, option};
  KivCmdline::init(withLog ? 2 : 1, words, true, "log");
}

/// A manager of the test's own; its log is the one of the current folder.
class Manager : public KivPluginManager {
public:
  using KivPluginManager::_TryToLoadPlugin;
};

inline KivBasicPluginList pluginsOf(KivPluginManager const & manager) {
  KivBasicPluginList plugins;
  manager.GetAllPlugins(plugins, true);
  return plugins;
}

/// The lines of the log, without their ends.
inline Lines logLines() {
  Lines lines;
  std::string const text = support::readFile("_plugin_manager.log").value_or("(no log)");
  std::size_t start = 0;
  for (std::size_t end = 0; (end = text.find("\r\n", start)) != std::string::npos; start = end + 2)
    lines.push_back(text.substr(start, end - start));
  if (start != text.size())
    lines.push_back(text.substr(start));
  return lines;
}

inline std::string fixturePath(std::string const & name = "plugin_fixture") {
  return support::binFolder() + name + ".dll";
}

/// Sets a variable of the plug-ins for the rest of the process.
inline void plugin(char const * variable, std::string const & value) {
  SetEnvironmentVariableA((std::string("KIVARA_PLUGIN_") + variable).c_str(), value.c_str());
}

inline bool isInProcess(std::string const & path) { return GetModuleHandleA(path.c_str()) != nullptr; }

inline std::string currentVersion() { return std::to_string(Kiv_GetVersionIdentifier()); }

} // namespace kivtest
