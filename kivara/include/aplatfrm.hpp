#pragma once
/// \file
/// What the rest of the product asks of its surroundings: the version of Windows, the screen's scale, the databases that
/// are installed, where the program lies and where it was started, the moment; and small values that its programs share.
///
/// Nothing here throws but for lack of memory. What may be called from any thread says so; the rest is for the main
/// thread.

#include "export.hpp"
#include "tools/containers.hpp"
#include "tools/date.hpp"
#include "tools/string.hpp"
#include "tools/time.hpp"

/// \name Version of Windows
/// Any thread may ask.
/// @{
KIV_API bool Kiv_IsAtLeastWindowsXP();
KIV_API bool Kiv_IsAtLeastWindowsVista();
KIV_API bool Kiv_IsAtLeastWindows7();
/// From the system's registry, since the version call tells programs without a matching manifest an older version.
/// False when the registry does not say.
KIV_API bool Kiv_IsAtLeastWindows10();

/// Whether a 32-bit program runs on a 64-bit system: the 64-bit library always answers false.
KIV_API bool Kiv_IsRunningOn64Bits();
/// @}

/// \name Scale of the screen
/// Pixels for one of 1/96 inch: 1.0 for 96 dots per inch, 1.5 for 144. Asked of the system once and then kept; 0 when
/// the system does not answer, and then asked again. Main thread.
/// @{
KIV_API double Kiv_GetSystemDPIScaleX();
KIV_API double Kiv_GetSystemDPIScaleY();
/// @}

/// \name Databases
/// @{

/// Whether the adapter of a database lies in the program's folder, as "adb272.dll" and the like; several may. Each call
/// that finds one leaves a search of the system open: ask a handful of times. Any thread.
/// @{
KIV_API bool Kiv_IsDBDB2();
KIV_API bool Kiv_IsDBInformix();
KIV_API bool Kiv_IsDBOracle();
KIV_API bool Kiv_IsDBSQLServer();
/// @}

/// Whether the drivers for SQL Server are good enough; true without the adapter for it. Otherwise "achkmdac.exe" beside
/// the program is run, minimised, and waited for; its exit code is 0 for good drivers and -333 when it cannot tell, which
/// counts as good. One that cannot be started is an internal error, and true.
KIV_API bool Kiv_IsValidMDACVersion();

/// The SQL Server instances of this machine, in place of what \p out held. Those that the registry lists for this
/// program come first, then those of the 64-bit view that are not among them. Any thread.
KIV_API void Kiv_GetSQLServerInstances(ISequence<SV::String> & out);

/// What came of a question to SQL Server.
enum MsdeAdmToolErrCode : int {
  MSDE_ADM_TOOL_OK = 0,
  MSDE_ADM_TOOL_FAILED = 1,       ///< another machine, or a version that cannot be read
  MSDE_ADM_TOOL_NO_INSTANCE = 35, ///< the registry does not know the instance
};

/// The major version of an SQL Server instance of this machine, 10 for "10.50.1600.1". Any thread.
/// \param instance  empty or "MSSQLSERVER" for the default one
/// \param server    empty or "." for this machine; any other gives MSDE_ADM_TOOL_FAILED and leaves \p version alone
/// \param version   -1 when it is not found
KIV_API MsdeAdmToolErrCode Kiv_DetermineSQLServerVersion(SV::String const & instance, SV::String const & server,
                                                         long & version);
/// @}

/// \name Connection to the database
/// The database layer of the product keeps a word that says whether it is connected, and lends it to the library.
/// Internal errors then tell of a lost connection instead. Any thread may ask.
/// @{

/// \param link  not 0 while connected; read at each question, so it must outlive the last of them. Null: no layer
KIV_API void Kiv_SetDBConnected_Link(short const * link);

/// True without a database layer, too.
KIV_API bool Kiv_Is_DBConnected();
/// @}

/// The folder of the program.
/// \param withSeparator  true: it ends in one '\\'; false: in none, but for a root
KIV_API SV::String Kiv_GetProgramPath(bool withSeparator);

/// The full name of a file in the program's folder. An absolute name ("C:\x", "\x", with '\\' or '/') and one that
/// Kiv_Valid_Filename refuses come back as they stand; null gives the empty text.
KIV_API SV::String Kiv_GetProgramPathFilename(char const * name);

/// The working directory at the start of the program; empty before the application frame has stored it.
/// \param withSeparator  true: it ends in one '\\'; false: in none, for a root either
KIV_API SV::String Kiv_GetStartCWD(bool withSeparator);

/// The name behind the start directory, without any test: an absolute name is joined all the same.
KIV_API SV::String Kiv_GetStartCWDFilename(char const * name);

/// \name Moments
/// @{

/// Writes the present local time as "31.12.2026, 9:05.07", or without the seconds: day, month, year, hour, minute,
/// second. The hour has no leading zero.
KIV_API void Kiv_GetCurrentDateTimeString(SV::String & out, bool withSeconds);

/// When the library was loaded. The objects are shared by all and live as long as the library.
KIV_API SV::Date * Kiv_GetStartupDate();
KIV_API SV::Time * Kiv_GetStartupTime();

/// A new identifier that no other machine has either: "6ba7b810-9dad-11d1-80b4-00c04fd430c8", in lower case. Empty, and an
/// internal error, when the system gives none.
KIV_API SV::String Kiv_GetNewUUID();
/// @}

/// \name Values of the product
/// Plain stores for the programs of the product: the library itself reads none of them.
/// @{

/// How the user got into the database.
enum KivDBSingleSignOnStatus : int {
  KIV_DB_SINGLE_SIGN_ON_OFF = 0, ///< with name and password; the value at start
  KIV_DB_SINGLE_SIGN_ON = 1,     ///< by the account of the system
};
KIV_API KivDBSingleSignOnStatus Kiv_GetLoginType();
KIV_API void Kiv_SetLoginType(KivDBSingleSignOnStatus type);

/// The user's name as it is shown; empty at start.
KIV_API SV::String Kiv_GetCurrentUserDisplayName();
/// Stores the user's name as it is shown.
KIV_API void Kiv_SetCurrentUserDisplayName(SV::String const & name);

/// Counts the changes of the list of users.
KIV_API long Kiv_GetUserListChangeCounter();
KIV_API void Kiv_SetUserListChangeCounter(long counter);

/// How strict the checks of expressions are, in words of the product; empty at start.
KIV_API SV::String Kiv_GetSyntaxChecksLevel();
/// Stores how strict the checks of expressions are.
KIV_API void Kiv_SetSyntaxChecksLevel(SV::String const & level);
/// @}

/// \name Names in the database
/// The administrator and the group of all users, in the language of the program. The texts stay where they are until the
/// program ends.
/// @{
KIV_API SV::String const & Kiv_GetAdminUserName();
KIV_API char const * Kiv_GetpAdminUserName();
KIV_API SV::String const & Kiv_GetKivaraUserGroupName();
KIV_API char const * Kiv_GetpKivaraUserGroupName();
/// @}
