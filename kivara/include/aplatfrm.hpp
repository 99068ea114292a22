#pragma once
/// \file
/// Facts about the platform: the version of Windows, the scale of the screen, the databases that are installed, the folder
/// of the program and the one it was started from, the date and time; and a few values that the product's programs share.
///
/// Functions that any thread may call say so; the others are for the main thread. Only lack of memory throws.

#include "export.hpp"
#include "tools/containers.hpp"
#include "tools/date.hpp"
#include "tools/string.hpp"
#include "tools/time.hpp"

/// \name Version of Windows
/// Any thread may call them.
/// @{
KIV_API bool Kiv_IsAtLeastWindowsXP();
KIV_API bool Kiv_IsAtLeastWindowsVista();
KIV_API bool Kiv_IsAtLeastWindows7();
/// Reads the registry, since the version call reports an older version to programs without a matching manifest. False when
/// the registry has no such value.
KIV_API bool Kiv_IsAtLeastWindows10();

/// Whether this is a 32-bit program on a 64-bit system; the 64-bit library always returns false.
KIV_API bool Kiv_IsRunningOn64Bits();
/// @}

/// \name Scale of the screen
/// The resolution divided by 96 dots per inch: 1.0 for 96, 1.5 for 144. The system is asked once and the answer is kept. 0
/// when the system does not answer; the next call asks again.
/// @{
KIV_API double Kiv_GetSystemDPIScaleX();
KIV_API double Kiv_GetSystemDPIScaleY();
/// @}

/// \name Databases
/// @{

/// Whether the adapter for a database is in the program's folder, as "adb272.dll" and the like. More than one may be true.
/// Each call that finds a file leaves a search handle open, so call them only a few times. Any thread may call them.
/// @{
KIV_API bool Kiv_IsDBDB2();
KIV_API bool Kiv_IsDBInformix();
KIV_API bool Kiv_IsDBOracle();
KIV_API bool Kiv_IsDBSQLServer();
/// @}

/// Whether the drivers for SQL Server are recent enough. True when the adapter for SQL Server is not installed. Otherwise
/// runs "achkmdac.exe" from the program's folder, minimised, and waits for it to end. Its exit code is 0 for good drivers;
/// -333 means that it could not find out, and counts as good. If it cannot be started, that is reported as an internal
/// error and the result is true.
KIV_API bool Kiv_IsValidMDACVersion();

/// Fills \p out with the SQL Server instances of this machine; what it held is removed. The instances in the program's own
/// view of the registry come first, then those that only the 64-bit view has. Any thread may call it.
KIV_API void Kiv_GetSQLServerInstances(ISequence<SV::String> & out);

/// The result of Kiv_DetermineSQLServerVersion.
enum MsdeAdmToolErrCode : int {
  MSDE_ADM_TOOL_OK = 0,
  MSDE_ADM_TOOL_FAILED = 1,       ///< another machine, or the version cannot be read
  MSDE_ADM_TOOL_NO_INSTANCE = 35, ///< the registry has no such instance
};

/// The major version of an SQL Server instance on this machine: 10 for "10.50.1600.1". Any thread may call it.
/// \param instance  empty or "MSSQLSERVER" for the default instance
/// \param server    empty or "." for this machine; any other name returns MSDE_ADM_TOOL_FAILED and leaves \p version
///                  unchanged
/// \param version   -1 when it is not found
KIV_API MsdeAdmToolErrCode Kiv_DetermineSQLServerVersion(SV::String const & instance, SV::String const & server,
                                                         long & version);
/// @}

/// \name Connection to the database
/// The database layer of the product keeps a flag that says whether it is connected, and lets the library read it. While
/// it is not connected, internal errors are shown as a lost connection. Any thread may ask.
/// @{

/// \param link  not 0 while connected. It is read by each call of Kiv_Is_DBConnected and must outlive the last one. Null
///              means that there is no database layer
KIV_API void Kiv_SetDBConnected_Link(short const * link);

/// Also true when there is no database layer.
KIV_API bool Kiv_Is_DBConnected();
/// @}

/// The folder of the program.
/// \param withSeparator  true: it ends in one '\\'; false: it ends in none, except for a root
KIV_API SV::String Kiv_GetProgramPath(bool withSeparator);

/// The full name of a file in the program's folder. An absolute name ("C:\x", "\x", with '\\' or '/') and a name that
/// Kiv_Valid_Filename rejects are returned unchanged; null gives the empty string.
KIV_API SV::String Kiv_GetProgramPathFilename(char const * name);

/// The working directory at the start of the program; empty until the application frame has stored it.
/// \param withSeparator  true: it ends in one '\\'; false: it ends in none, even for a root
KIV_API SV::String Kiv_GetStartCWD(bool withSeparator);

/// The start directory followed by the name. The name is not checked: even an absolute one is appended.
KIV_API SV::String Kiv_GetStartCWDFilename(char const * name);

/// \name Moments
/// @{

/// Writes the current local date and time as "31.12.2026, 9:05.07", or "31.12.2026, 9:05" without the seconds. The hour has
/// no leading zero.
KIV_API void Kiv_GetCurrentDateTimeString(SV::String & out, bool withSeconds);

/// When the library was loaded. All callers share these objects, which live as long as the library.
KIV_API SV::Date * Kiv_GetStartupDate();
KIV_API SV::Time * Kiv_GetStartupTime();

/// A new universally unique identifier in lower case, such as "6ba7b810-9dad-11d1-80b4-00c04fd430c8". When the system gives
/// none, that is reported as an internal error and the result is empty.
KIV_API SV::String Kiv_GetNewUUID();
/// @}

/// \name Values of the product
/// The programs of the product set and read these; the library itself reads none of them.
/// @{

/// How the user logged on to the database.
enum KivDBSingleSignOnStatus : int {
  KIV_DB_SINGLE_SIGN_ON_OFF = 0, ///< with a name and a password; the value at the start
  KIV_DB_SINGLE_SIGN_ON = 1,     ///< with the Windows account
};
KIV_API KivDBSingleSignOnStatus Kiv_GetLoginType();
KIV_API void Kiv_SetLoginType(KivDBSingleSignOnStatus type);

/// The name that is shown for the current user; empty at the start.
KIV_API SV::String Kiv_GetCurrentUserDisplayName();
/// Stores the name that is shown for the current user.
KIV_API void Kiv_SetCurrentUserDisplayName(SV::String const & name);

/// A counter for changes to the list of users.
KIV_API long Kiv_GetUserListChangeCounter();
KIV_API void Kiv_SetUserListChangeCounter(long counter);

/// How strictly expressions are checked, in the product's own words; empty at the start.
KIV_API SV::String Kiv_GetSyntaxChecksLevel();
/// Stores how strictly expressions are checked.
KIV_API void Kiv_SetSyntaxChecksLevel(SV::String const & level);
/// @}

/// \name Names in the database
/// The administrator and the group of all users, in the language of the program. The strings stay valid until the program
/// ends.
/// @{
KIV_API SV::String const & Kiv_GetAdminUserName();
KIV_API char const * Kiv_GetpAdminUserName();
KIV_API SV::String const & Kiv_GetKivaraUserGroupName();
KIV_API char const * Kiv_GetpKivaraUserGroupName();
/// @}
