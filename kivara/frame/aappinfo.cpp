#include "aappinfo.hpp"

#include "frame/aversion.hpp"
#include "frame/aversion_texts.hpp"

using SV::String;

namespace {

kivara::VersionTexts & version() {
  static kivara::VersionTexts texts{KIVARA_VERSION_HIGH, KIVARA_VERSION_LOW, KIVARA_VERSION_UPDATE_LEVEL,
                                    KIVARA_VERSION_HOT_FIX, KIVARA_VERSION_BUILD};
  return texts;
}

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
