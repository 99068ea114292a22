#pragma once
/// \file
/// Facts of the platform: the version of Windows, the screen's scale, where the program lies and where it was started.

#include "export.hpp"
#include "tools/string.hpp"

/// \name Version of Windows
/// Any thread may ask.
/// @{
KIV_API bool Kiv_IsAtLeastWindowsXP();
KIV_API bool Kiv_IsAtLeastWindowsVista();
KIV_API bool Kiv_IsAtLeastWindows7();
/// From the system's registry, since the version call tells programs without a matching manifest an older version.
/// False when the registry does not say.
KIV_API bool Kiv_IsAtLeastWindows10();
/// @}

/// \name Scale of the screen
/// Pixels for one of 1/96 inch: 1.0 for 96 dots per inch, 1.5 for 144. Asked of the system once and then kept; 0 when
/// the system does not answer, and then asked again. Main thread.
/// @{
KIV_API double Kiv_GetSystemDPIScaleX();
KIV_API double Kiv_GetSystemDPIScaleY();
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
