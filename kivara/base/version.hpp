#pragma once
/// \file
/// The version of the product as texts, and the forms that it is shown in.

#include "tools/string.hpp"

namespace kivara {

/// The parts of a version, each the decimal text of a number.
struct VersionTexts {
  SV::String high;
  SV::String low;
  SV::String updateLevel;
  SV::String hotFix;
  SV::String build;
};

/// (high * 10 + low) * 1000 + build.
int versionIdentifier(VersionTexts const & version);

/// "7.2": zeros at the end are cut, but one digit stays behind the point.
SV::String versionString(VersionTexts const & version);

/// "7.2_5050". The build text is padded with zeros in front to 4 characters, and stays so.
SV::String buildVersionString(VersionTexts & version);

/// "7.20.00": a hot fix of one character gets a zero in front.
SV::String patchVersionString(VersionTexts const & version);

/// "7.20.00.5050", with the build text padded as above.
SV::String patchBuildVersionString(VersionTexts & version);

} // namespace kivara
