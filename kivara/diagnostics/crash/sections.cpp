#include "diagnostics/crash/sections.hpp"

#include "aappinfo.hpp"
#include "aplatfrm.hpp"
#include "aplugin.hpp"
#include "aprint.hpp"
#include "diagnostics/crash/report.hpp"
#include "diagnostics/crash/times.hpp"
#include "diagnostics/crash/windowsname.hpp"
#include "sv/system.hpp"
#include "tools/string.hpp"

#include <cstdlib>

namespace kivara::crash {
namespace {

struct Database {
  bool (*isThere)();
  char const * name;
};

constexpr Database kDatabases[] = {
    {Kiv_IsDBDB2, "DB2"},
    {Kiv_IsDBInformix, "Informix"},
    {Kiv_IsDBSQLServer, "SQL Server"},
    {Kiv_IsDBOracle, "Oracle"},
};

void writeDatabases() {
  write("    Supported DB systems: ");
  char const * separator = "";
  for (auto const & each : kDatabases)
    if (each.isThere()) {
      write("%s%s", separator, each.name);
      separator = ", ";
    }
  write("\r\n");
}

void writeCommandLine() {
  char const * const line = GetCommandLineA();
  writeLong("    Command line: '", line != nullptr ? line : "[null]", "'\r\n");
}

/// A line for each line of the information that the program gave about itself.
void writeApplicationInfo() {
  SV::String info = KivApplicationInfo::GetInfo();
  if (info.Len() == 0)
    return;
  write("    ");
  for (char const * rest = info.c_str();;) {
    char const * const end = SV::h_strchr(rest, '\n');
    if (end == nullptr) {
      writeLong("", rest, "\r\n");
      return;
    }
    SV::String const line(rest, static_cast<std::int32_t>(end - rest));
    writeLong("", line.c_str(), "\r\n    ");
    rest = end + 1;
  }
}

void writeHeader() {
  write("  KIVARA\r\n");
  write("    Version: %s\r\n", Kiv_GetPatchBuildVersionString().c_str());
  writeDatabases();
  writeCommandLine();
  writeApplicationInfo();
}

void writeSystem() {
  OSVERSIONINFOA version{};
  version.dwOSVersionInfoSize = sizeof version;
  GetVersionExA(&version);
  write("  Windows version: ");
  WindowsName const name(version.dwPlatformId, version.dwMajorVersion, version.dwMinorVersion);
  write("%s %s (%d.%d.%d [%d])\r\n", name.c_str(), version.szCSDVersion, static_cast<int>(version.dwMajorVersion),
        static_cast<int>(version.dwMinorVersion), static_cast<int>(version.dwBuildNumber),
        static_cast<int>(version.dwPlatformId));
  write("  Architecture: Windows %s\r\n", Kiv_IsRunningOn64Bits() ? "64-bit" : "32-bit");
}

void writeFolders() {
  char current[1024] = "";
  if (GetCurrentDirectoryA(sizeof current, current) == 0)
    writeFailure("GetCurrentDirectory (1024, sDir)", GetLastError());
  write("  Current directory: %s\r\n", current);
  write("  Module directory: %s\r\n", dumpState().paths.moduleDirectory);
}

void writePlugin(int number, KivBasicPlugin const * plugin) {
  if (plugin == nullptr)
    write("    %.2d - NULL pointer\r\n", number);
  else
    write("    %.2d %s [%s]\r\n", number, plugin->getPluginFilename().c_str(), plugin->getPluginName().c_str());
}

/// A manager is not made for this: that would open the log of plug-ins.
void writePlugins() {
  KivBasicPluginList plugins;
  if (KivPluginManager const * const manager = KivPluginManager::_Existing())
    manager->GetAllPlugins(plugins, true);
  if (plugins.empty()) {
    write("  No loaded plugins!\r\n");
    return;
  }
  write("  %d loaded plugins:\r\n", static_cast<int>(plugins.size()));
  int number = 0;
  for (KivBasicPlugin const * const plugin : plugins)
    writePlugin(++number, plugin);
}

void writeEnvironment() {
  write("  Environment variables:\r\n");
  char const * const * entry = _environ;
  for (; entry != nullptr && *entry != nullptr; ++entry)
    writeLong("    ", *entry, "\r\n");
}

void writePrinter() {
  KivPrinter const * const printer = Kiv_GetPrinter(false);
  write("  Printer: %s\r\n", printer != nullptr ? printer->GetName().c_str() : "(NULL)");
  write("  Printer driver: %s\r\n", SV::System::GetPrinterDriverName().c_str());
}

constexpr void (*kSections[])() = {
    writeHeader,     writeSystem,      writeFolders, writePlugins,      writeCrashTimes,
    writeExecutable, writeEnvironment, writePrinter, writeProcessTimes, writeSystemUpTime,
};

} // namespace

void writeFacts(char const * title) {
  write("\r\n# [dump v4] %s\n\r\n", title);
  for (auto const section : kSections) {
    try {
      section();
    } catch (...) { // no memory for a text
    }
    endSection();
  }
}

} // namespace kivara::crash
