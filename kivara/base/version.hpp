#pragma once
/// \file
/// The version of the product as strings, and the forms in which it is shown.

#include "tools/string.hpp"

namespace kivara {

/// The parts of a version, each a decimal number as a string.
struct VersionTexts {
  SV::String high;
  SV::String low;
  SV::String updateLevel;
  SV::String hotFix;
  SV::String build;
};

/// (high * 10 + low) * 1000 + build.
int versionIdentifier(VersionTexts const & version);

/// "7.2": trailing zeros are cut, but one digit remains after the point.
SV::String versionString(VersionTexts const & version);

/// "7.2_5050". The stored build is padded to 4 characters with leading zeros.
SV::String buildVersionString(VersionTexts & version);

/// "7.20.00": a hot fix of one character gets a leading zero.
SV::String patchVersionString(VersionTexts const & version);

/// "7.20.00.5050", with the build padded as above.
SV::String patchBuildVersionString(VersionTexts & version);

} // namespace kivara
