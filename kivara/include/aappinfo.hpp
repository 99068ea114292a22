#pragma once
/// \file
/// Facts of the application: the version of the product.

#include "export.hpp"
#include "tools/string.hpp"

/// \name Version
/// The version has five parts, which are kept as texts: high, low, update level, hot fix and build. The functions that
/// pad the build text change what is kept, so all of these are for the main thread.
/// @{

/// The parts as numbers.
KIV_API int Kiv_GetVersionHigh();
KIV_API int Kiv_GetVersionLow();
KIV_API int Kiv_GetVersionUL();
KIV_API int Kiv_GetVersionHF();
KIV_API int Kiv_GetVersionBuild();

/// The number that a plug-in must match exactly: (high * 10 + low) * 1000 + build, 77050 for version 7.2 build 5050.
/// Versions such as 7.12 and 8.2 of one build share a number.
KIV_API int Kiv_GetVersionIdentifier();

/// High and low part, "7.2". Zeros at the end are cut, but one digit stays behind the point.
KIV_API SV::String Kiv_GetVersionString();

/// "7.2_5050". A build text below 4 characters gets zeros in front, and keeps them.
KIV_API SV::String Kiv_GetBuildVersionString();

/// High, low and update level, then the hot fix with two digits: "7.20.00".
KIV_API SV::String Kiv_GetPatchVersionString();

/// The patch form and the build: "7.20.00.5050". The build text is padded as in Kiv_GetBuildVersionString.
KIV_API SV::String Kiv_GetPatchBuildVersionString();
/// @}
