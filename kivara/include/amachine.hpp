#pragma once
/// \file
/// Identifiers of the machine: the address of its network adapter, the identifier of its Windows installation, and the UUID
/// of the computer. docs/platform.md says what each of them proves and what it does not.
///
/// Nothing is cached, each call asks the system, and any thread may call. If the source is missing or does not answer, the
/// result is the empty string. Only lack of memory throws.
///
/// \code
///   SV::String const machine = KivWMI::GetWindowsSystemID();
///   if (machine.Len() > 0 && machine == licence.machine)
///     start();
/// \endcode

#include "export.hpp"
#include "tools/string.hpp"

/// The address of the first physical network adapter, in the form "AA-BB-CC-DD-EE-FF". It is the address built into the
/// adapter, even if the adapter currently uses another. Wired adapters come before wireless ones; within each kind, the
/// first is the one that Windows numbered first. The adapter need not be connected.
KIV_API SV::String Kiv_GetMACAsString();

/// The identifier that Windows got when it was installed, as it is in the registry, such as
/// "5951739d-ba2f-4d46-8a3f-4c450f33583c".
KIV_API SV::String Kiv_GetSystemIDAsString();

/// Questions to Windows Management Instrumentation (WMI).
class KIV_API KivWMI {
public:
  /// The UUID of the computer from its firmware, such as "3D1219C7-C4C5-404A-AA1F-6D2A48ADFDA4". It is returned as it is,
  /// even if the manufacturer left it as all zeros or all F. A call takes a fraction of a second, but up to some minutes
  /// when the WMI service hangs. COM is initialised on the calling thread for the duration of the call unless it already is.
  static SV::String GetWindowsSystemID();
};
