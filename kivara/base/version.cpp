#include "base/version.hpp"

using SV::String;

namespace kivara {
namespace {

void padBuild(VersionTexts & version) {
  while (version.build.Len() < 4)
    version.build = "0" + version.build;
}

} // namespace

int versionIdentifier(VersionTexts const & version) {
  int const high = SV::h_atoi(version.high.c_str());
  int const low = SV::h_atoi(version.low.c_str());
  // The low part overflows into the high part, so the plug-ins of 7.12 and 8.2 differ only by their build.
  return (high * 10 + low) * 1000 + SV::h_atoi(version.build.c_str());
}

String versionString(VersionTexts const & version) {
  String text = version.high + "." + version.low;
  while (text.Len() > version.high.Len() + 2 && text.lastChar() == '0')
    text = text.substr(0, text.Len() - 1);
  return text;
}

String buildVersionString(VersionTexts & version) {
  padBuild(version);
  return version.high + "." + version.low + "_" + version.build;
}

String patchVersionString(VersionTexts const & version) {
  String const hotFix = version.hotFix.Len() == 1 ? "0" + version.hotFix : version.hotFix;
  return version.high + "." + version.low + version.updateLevel + "." + hotFix;
}

String patchBuildVersionString(VersionTexts & version) {
  padBuild(version);
  return patchVersionString(version) + "." + version.build;
}

} // namespace kivara
