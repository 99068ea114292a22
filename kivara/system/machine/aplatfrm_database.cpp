#include "acmdline.hpp"
#include "aplatfrm.hpp"
#include "atrace.hpp"
#include "base/modules.hpp"
#include "base/version.hpp"
#include "kivara_version.hpp"
#include "system/machine/registrykey.hpp"
#include "tools/direntry.hpp"

#include <algorithm>
#include <optional>

using kivara::MachineKey;
using SV::String;

namespace {

constexpr unsigned kLineCheckerNotStarted = 710;
constexpr int kCheckerNotStarted = -333;

/// "7.2". Any thread may look for an adapter, so this does not use the strings behind Kiv_GetVersionString, which its first caller
/// creates without a guard.
String productVersion() {
  return kivara::versionString({String(KIVARA_VERSION_HIGH), String(KIVARA_VERSION_LOW),
                                String(KIVARA_VERSION_UPDATE_LEVEL), String(KIVARA_VERSION_HOT_FIX),
                                String(KIVARA_VERSION_BUILD)});
}

bool hasAdapter(char const * stem) {
  String version = productVersion();
  String const file = String(stem) + version.EraseAllChars('.') + ".dll";
  WIN32_FIND_DATAA found;
  // The search is left open. That is known to the callers, which ask only a few times in the life of a process.
  return FindFirstFileA(Kiv_GetProgramPathFilename(file.c_str()).c_str(), &found) != INVALID_HANDLE_VALUE;
}

/// The checker of the database drivers, in the folder of the program as it was called.
String checkerFile() {
  SV::DirEntry const program(KivCmdline::Instance().getParam(0));
  return program.GetPath().GetFull(SV::FSYS_STYLE_HOST, 1, SV::STRING_MAXLEN) + "achkmdac.exe";
}

/// Minimised and without the focus. None when it cannot be started.
handles::KernelObject start(String const & file) {
  STARTUPINFOA startup = {};
  startup.cb = sizeof startup;
  startup.dwFlags = STARTF_USESHOWWINDOW;
  startup.wShowWindow = SW_SHOWMINNOACTIVE;
  PROCESS_INFORMATION process = {};
  if (!CreateProcessA(file.c_str(), nullptr, nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup, &process))
    return {};
  handles::KernelObject const thread(process.hThread);
  return handles::KernelObject(process.hProcess);
}

int exitCodeOf(HANDLE process) {
  constexpr DWORD interval = 100; // milliseconds
  while (WaitForSingleObject(process, interval) == WAIT_TIMEOUT) {
  }
  DWORD code = 0;
  GetExitCodeProcess(process, &code);
  return static_cast<int>(code);
}

int runChecker() {
  handles::KernelObject const process = start(checkerFile());
  if (!process) {
    displayErrorMessage(kivara::modules::kAtools, kLineCheckerNotStarted);
    return kCheckerNotStarted;
  }
  return exitCodeOf(process.get());
}

void addName(String const & name, ISequence<String> & names) {
  if (name.Len() != 0 && std::find(names.begin(), names.end(), name) == names.end())
    names.push_back(name);
}

/// Adds the instances that one view of the registry lists.
void addInstances(REGSAM view, ISequence<String> & names) {
  char text[4096];
  MachineKey const key("SOFTWARE\\Microsoft\\Microsoft SQL Server", view);
  std::optional<DWORD> const size = key.read("InstalledInstances", text, sizeof text);
  char const * name = text;
  for (char const * at = text; at != text + size.value_or(0); ++at) {
    if (*at != '\0')
      continue;
    addName(String(name), names);
    name = at + 1;
  }
}

String versionKey(String const & instance) {
  if (instance.Len() == 0 || instance == "MSSQLSERVER")
    return "SOFTWARE\\Microsoft\\MSSqlServer\\MSSqlServer\\CurrentVersion";
  return "SOFTWARE\\Microsoft\\Microsoft SQL Server\\" + instance + "\\MSSQLServer\\CurrentVersion";
}

/// "9.00.1399.06" gives 9, "10.50.1600.1" gives 10, "100" gives 100. The array has at least three characters.
long majorVersion(char * text) {
  if (text[1] == '.')
    text[1] = '\0';
  else if (text[2] == '.')
    text[2] = '\0';
  return SV::h_atoi(text);
}

} // namespace

bool Kiv_IsDBDB2() { return hasAdapter("adb2"); }
bool Kiv_IsDBInformix() { return hasAdapter("aifx"); }
bool Kiv_IsDBOracle() { return hasAdapter("aora"); }
bool Kiv_IsDBSQLServer() { return hasAdapter("amss"); }

bool Kiv_IsValidMDACVersion() {
  if (!Kiv_IsDBSQLServer())
    return true;
  int const code = runChecker();
  return code == 0 || code == kCheckerNotStarted; // a checker that does not start must not lock out the user
}

void Kiv_GetSQLServerInstances(ISequence<String> & out) {
  out.clear();
  addInstances(KEY_READ, out);
  addInstances(KEY_READ | KEY_WOW64_64KEY, out);
}

MsdeAdmToolErrCode Kiv_DetermineSQLServerVersion(String const & instance, String const & server, long & version) {
  if (server.Len() != 0 && server != ".")
    return MSDE_ADM_TOOL_FAILED;
  version = -1;
  MachineKey const key(versionKey(instance).c_str());
  if (!key.isOpen())
    return MSDE_ADM_TOOL_NO_INSTANCE;
  constexpr DWORD most = 256;
  char text[most + 1] = "";
  if (!key.read("CurrentVersion", text, most))
    return MSDE_ADM_TOOL_FAILED;
  version = majorVersion(text);
  return MSDE_ADM_TOOL_OK;
}
