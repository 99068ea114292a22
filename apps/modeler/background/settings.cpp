#include "background/settings.hpp"

#include "acmdline.hpp"
#include "tools/winapi.hpp"

using SV::String;

namespace modeler {
namespace {

constexpr char kSection[] = "Modeler";
constexpr char kFile[] = "modeler.ini";
constexpr char kTheme[] = "Theme";
constexpr char kStyles[] = "VisualStyles";

/// The system would look for a relative name in its own folder.
String settingsFile() {
  String const given = KivCmdline::Instance().getValue("keep");
  return given.Len() > 0 ? SV::DirEntry(given).GetFull() : Kiv_GetProgramPathFilename(kFile);
}

} // namespace

Settings::Settings() : file_(settingsFile()) {}

String Settings::Get(char const * name, char const * fallback) const {
  char value[64];
  GetPrivateProfileStringA(kSection, name, fallback, value, sizeof value, file_.c_str());
  return value;
}

void Settings::Set(char const * name, String const & value) const {
  WritePrivateProfileStringA(kSection, name, value.c_str(), file_.c_str());
}

bool Settings::IsOn(char const * name, bool fallback) const { return Get(name, fallback ? "1" : "0") == "1"; }

void Settings::SetOn(char const * name, bool isOn) const { Set(name, isOn ? "1" : "0"); }

void applyLook(Settings const & settings) {
  KivThemeManager & themes = KivThemeManager::Instance();
  themes.SetVisualStylesXPEnabled(settings.IsOn(kStyles, true));
  themes.SetCurrentTheme(settings.Get(kTheme, "Modern"));
}

void chooseTheme(Settings const & settings, String const & name) {
  KivThemeManager::Instance().SetCurrentTheme(name);
  settings.Set(kTheme, name);
}

void useVisualStyles(Settings const & settings, bool isOn) {
  KivThemeManager & themes = KivThemeManager::Instance();
  themes.SetVisualStylesXPEnabled(isOn);
  themes.SetCurrentTheme(KivThemeManager::CurrentTheme().GetName()); // the windows are painted anew by that
  settings.SetOn(kStyles, isOn);
}

} // namespace modeler
