#include "aplatfrm.hpp"

#include "atools.hpp"
#include "handles/handle.hpp"
#include "sv/sysdepen.hpp"
#include "system/machine/registrykey.hpp"
#include "system/machine/startdir.hpp"
#include "system/machine/winver.hpp"
#include "tools/direntry.hpp"
#include "tools/winapi.hpp"

using SV::String;

namespace {

double dpiScaleX = 0;
double dpiScaleY = 0;
String startDirectory;

kivara::WindowsVersion windowsVersion() {
  OSVERSIONINFOA record = {};
  static_assert(sizeof record == 0x94);
  record.dwOSVersionInfoSize = sizeof record;
  GetVersionExA(&record);
  return {record.dwMajorVersion, record.dwMinorVersion, record.dwPlatformId};
}

double systemScale(int capability) {
  handles::ScreenDevice const screen(GetDC(nullptr));
  return screen ? GetDeviceCaps(screen.get(), capability) / 96.0 : 0;
}

double cachedScale(double & cache, int capability) {
  if (cache == 0)
    cache = systemScale(capability);
  return cache;
}

bool isSeparator(char c) { return c == '\\' || c == '/'; }

bool isAbsolute(String const & name) {
  return isSeparator(name.charAt(0)) || (name.charAt(1) == ':' && isSeparator(name.charAt(2)));
}

} // namespace

bool Kiv_IsAtLeastWindowsXP() { return kivara::isAtLeastXP(windowsVersion()); }
bool Kiv_IsAtLeastWindowsVista() { return kivara::isAtLeastVista(windowsVersion()); }
bool Kiv_IsAtLeastWindows7() { return kivara::isAtLeast7(windowsVersion()); }

bool Kiv_IsAtLeastWindows10() {
  kivara::MachineKey const key("SOFTWARE\\Microsoft\\Windows NT\\CurrentVersion");
  DWORD major = 0;
  return key.read("CurrentMajorVersionNumber", &major, sizeof major) == sizeof major && major >= 10;
}

bool Kiv_IsRunningOn64Bits() {
  using Question = BOOL(WINAPI *)(HANDLE, BOOL *);
  FARPROC const entry = GetProcAddress(GetModuleHandleA("kernel32"), "IsWow64Process");
  BOOL answer = FALSE;
  return entry != nullptr &&
         reinterpret_cast<Question>(reinterpret_cast<void *>(entry))(GetCurrentProcess(), &answer) && answer;
}

double Kiv_GetSystemDPIScaleX() { return cachedScale(dpiScaleX, LOGPIXELSX); }
double Kiv_GetSystemDPIScaleY() { return cachedScale(dpiScaleY, LOGPIXELSY); }

String Kiv_GetProgramPath(bool withSeparator) {
  char program[260] = "";
  GetModuleFileNameA(SV::Sysdepen::GethInst(), program, sizeof program);
  program[sizeof program - 1] = '\0';
  return SV::DirEntry(String(program)).GetPath().GetFull(SV::FSYS_STYLE_HOST, withSeparator, SV::STRING_MAXLEN);
}

String Kiv_GetProgramPathFilename(char const * name) {
  String const text(name);
  return isAbsolute(text) || !Kiv_Valid_Filename(name) ? text : Kiv_GetProgramPath(true) + text;
}

String Kiv_GetStartCWD(bool withSeparator) {
  return withSeparator ? startDirectory : startDirectory.substr(0, startDirectory.Len() - 1);
}

String Kiv_GetStartCWDFilename(char const * name) { return Kiv_GetStartCWD(true) + name; }

namespace kivara {

void storeStartDirectory(char const * directory) {
  String text(directory);
  text.replaceAll('/', '\\');
  while (text.Len() != 0 && text.lastChar() == '\\')
    text = text.substr(0, text.Len() - 1);
  startDirectory = directory != nullptr && *directory != '\0' ? text + "\\" : String();
}

} // namespace kivara
