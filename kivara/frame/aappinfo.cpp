#include "aappinfo.hpp"

#include "acmdline.hpp"
#include "base/textids.hpp"
#include "base/version.hpp"
#include "kivara_version.hpp"
#include "sv/resource.hpp"

#include <array>

using SV::String;

namespace {

KivApplicationType applicationType = KIV_APPLICATION_TOOLKIT;
bool isWebService = false;
String toolName;
IKeySortedSet<String, String> applicationInfo;
std::array<long, 235> coreVars;

kivara::VersionTexts & version() {
  static kivara::VersionTexts texts{String(KIVARA_VERSION_HIGH), String(KIVARA_VERSION_LOW),
                                    String(KIVARA_VERSION_UPDATE_LEVEL), String(KIVARA_VERSION_HOT_FIX),
                                    String(KIVARA_VERSION_BUILD)};
  return texts;
}

kivara::texts::Id toolNameText() {
  switch (applicationType) {
  case KIV_APPLICATION_RUNTIME: return kivara::texts::kRuntimeName;
  case KIV_APPLICATION_TOOLKIT: return kivara::texts::kToolkitName;
  default: return kivara::texts::kProgramName;
  }
}

/// Without a resource manager nothing is loaded: that would be a severe exception.
String toolNameFromResources() {
  return SV::Resource::GetResManager() != nullptr ? SV::Resource::LoadString(toolNameText()) : String();
}

long & coreVar(KivCoreVarType variable) { return coreVars[static_cast<std::size_t>(variable)]; }

} // namespace

int Kiv_GetVersionHigh() { return SV::h_atoi(version().high.c_str()); }
int Kiv_GetVersionLow() { return SV::h_atoi(version().low.c_str()); }
int Kiv_GetVersionUL() { return SV::h_atoi(version().updateLevel.c_str()); }
int Kiv_GetVersionHF() { return SV::h_atoi(version().hotFix.c_str()); }
int Kiv_GetVersionBuild() { return SV::h_atoi(version().build.c_str()); }
int Kiv_GetVersionIdentifier() { return kivara::versionIdentifier(version()); }

String Kiv_GetVersionString() { return kivara::versionString(version()); }
String Kiv_GetBuildVersionString() { return kivara::buildVersionString(version()); }
String Kiv_GetPatchVersionString() { return kivara::patchVersionString(version()); }
String Kiv_GetPatchBuildVersionString() { return kivara::patchBuildVersionString(version()); }

void Kiv_SetApplicationType(KivApplicationType type) { applicationType = type; }
KivApplicationType Kiv_GetApplicationType() { return applicationType; }
bool Kiv_IsKVTK() { return applicationType == KIV_APPLICATION_TOOLKIT; }
bool Kiv_IsREETK() { return applicationType == KIV_APPLICATION_RUNTIME; }

bool Kiv_IsWS() { return isWebService; }
void Kiv_SetWS(bool isOne) { isWebService = isOne; }

String Kiv_GetToolName(bool reset) {
  if (reset)
    toolName = String();
  if (toolName.Len() == 0)
    toolName = KivCmdline::Instance().getToolName();
  if (toolName.Len() == 0)
    toolName = toolNameFromResources();
  return toolName;
}

void KivApplicationInfo::SetValue(String const & key, String const & value) { applicationInfo[key] = value; }

String KivApplicationInfo::GetInfo() {
  String info;
  for (auto const & [key, value] : applicationInfo) {
    if (info.Len() != 0)
      info += '\n';
    info += key;
    info += ": ";
    info += value;
  }
  return info;
}

long Kiv_GetCoreVarConst(KivCoreVarType variable) { return coreVar(variable); }
long & Kiv_GetCoreVar(KivCoreVarType variable) { return coreVar(variable); }
void Kiv_SetCoreVar(KivCoreVarType variable, long value) { coreVar(variable) = value; }

KivComponentInformation & KivComponentInformation::Instance() {
  static KivComponentInformation theList;
  return theList;
}

KivComponentInformation::KivComponentInformation() = default;
KivComponentInformation::~KivComponentInformation() = default;

bool KivComponentInformation::registerComponent(String const & id, String const & name, String const & version,
                                                bool overwrite) {
  auto const [place, isNew] = components_.try_emplace(id, Component{name, version});
  if (!isNew && !overwrite)
    return false;
  place->second = {name, version};
  return true;
}

void KivComponentInformation::getComponents(ISequence<String> & ids) const {
  ids.clear();
  for (auto const & each : components_)
    ids.push_back(each.first);
}

String KivComponentInformation::getVersionOfComponent(String const & id) const {
  auto const found = components_.find(id);
  return found != components_.end() ? found->second.version : String();
}

String KivComponentInformation::getNameOfComponent(String const & id) const {
  auto const found = components_.find(id);
  return found != components_.end() ? found->second.name : String();
}
