#pragma once
/// \file
/// Facts of the application: the version of the product, the kind of the program, texts for crash reports, numbers that
/// modules share, and the list of what is installed.
///
/// All of them are for the main thread: they are set while the program starts and read afterwards. Nothing is locked.
///
/// \code
///   Kiv_SetApplicationType(KIV_APPLICATION_RUNTIME);
///   KivApplicationInfo::SetValue("database", name); // a line of each crash report
///   KivComponentInformation::Instance().registerComponent("sim", "Simulation", "2.1", false);
/// \endcode

#include "export.hpp"
#include "kivara_version.hpp"
#include "tools/containers.hpp"
#include "tools/string.hpp"

/// \name Version
/// The version has five parts, which are kept as texts: high, low, update level, hot fix and build. They are those of the
/// DLL that the program runs with; kivara_version.hpp has those of the headers.
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

/// Whether the calling code was built with the headers of the DLL that it runs with, judged by the number above. Where
/// they differ, the layout of classes may differ too, and nothing else of the library may be used.
inline bool Kiv_HeadersMatchLibrary() { return Kiv_GetVersionIdentifier() == KIVARA_VERSION_IDENTIFIER; }

/// High and low part, "7.2". Zeros at the end are cut, but one digit stays after the point.
KIV_API SV::String Kiv_GetVersionString();

/// "7.2_5050". A build text of fewer than 4 characters is padded with leading zeros for good.
KIV_API SV::String Kiv_GetBuildVersionString();

/// High, low and update level, then the hot fix with two digits: "7.20.00".
KIV_API SV::String Kiv_GetPatchVersionString();

/// The patch form and the build: "7.20.00.5050". The build text is padded as in Kiv_GetBuildVersionString.
KIV_API SV::String Kiv_GetPatchBuildVersionString();
/// @}

/// \name Kind of the program
/// @{

/// What the program is; a number beside these is neither.
enum KivApplicationType : int {
  KIV_APPLICATION_RUNTIME = 0, ///< runs what was modelled
  KIV_APPLICATION_TOOLKIT = 1, ///< makes models; what a program is that does not say otherwise
};

/// Set once, before anything asks for it.
/// @{
KIV_API void Kiv_SetApplicationType(KivApplicationType type);
KIV_API KivApplicationType Kiv_GetApplicationType();
/// @}

/// Whether it makes models.
KIV_API bool Kiv_IsKVTK();
/// Whether it runs them.
KIV_API bool Kiv_IsREETK();

/// Whether it is a web service, which is independent of the kind; false at first.
KIV_API bool Kiv_IsWS();
KIV_API void Kiv_SetWS(bool isWebService);

/// What the program is called: the value of "-toolname", otherwise the text of its kind in the language's resources
/// (0x2002913 runtime, 0x2002914 toolkit, 0x2002927 others). It is looked up once and then kept. Without an active
/// resource manager there is no text: the result is empty, and the next call asks again.
/// \param reset  true: it is looked up again, as is needed after a change of the language
KIV_API SV::String Kiv_GetToolName(bool reset);
/// @}

/// Texts about the program for crash reports, by a key of the caller's choice.
class KIV_API KivApplicationInfo {
public:
  KivApplicationInfo() = delete;

  /// Adds a text, or replaces the one of that key.
  static void SetValue(SV::String const & key, SV::String const & value);

  /// All of them in the order of their keys, "key: value", with a line feed between two.
  static SV::String GetInfo();
};

/// \name Core variables
/// 235 numbers, all 0 at first, through which the modules of a product share values. What each one means is up to
/// them: they agree on a KivCoreVarType from 0 to 234. The index is not checked.
/// @{

enum KivCoreVarType : int {};

/// The value of the variable.
KIV_API long Kiv_GetCoreVarConst(KivCoreVarType variable);
/// The variable itself, valid to the end of the process.
KIV_API long & Kiv_GetCoreVar(KivCoreVarType variable);
KIV_API void Kiv_SetCoreVar(KivCoreVarType variable, long value);
/// @}

/// The components that are installed, as they registered themselves. The library checks nothing against the list.
class KIV_API KivComponentInformation {
public:
  /// The list of the process; destroyed at its end.
  static KivComponentInformation & Instance();

  KivComponentInformation(KivComponentInformation const &) = delete;
  KivComponentInformation & operator=(KivComponentInformation const &) = delete;

  /// \param id         case-sensitive
  /// \param overwrite  true: a component of that identifier is replaced
  /// \return false, with nothing changed, for an identifier that is registered already and is not to be replaced
  bool registerComponent(SV::String const & id, SV::String const & name, SV::String const & version, bool overwrite);

  /// The identifiers in byte order; the former contents of \p ids are dropped.
  void getComponents(ISequence<SV::String> & ids) const;

  /// The empty string for an unknown identifier.
  /// @{
  SV::String getVersionOfComponent(SV::String const & id) const;
  SV::String getNameOfComponent(SV::String const & id) const;
  /// @}

private:
  struct Component {
    SV::String name;
    SV::String version;
  };

  KivComponentInformation();
  ~KivComponentInformation();

  IKeySortedSet<SV::String, Component> components_;
};
