#pragma once
/// \file
/// The toolkit entry: how a process gets from its WinMain to the application object.

#include "export.hpp"

struct HINSTANCE__;

/// Runs the process's application object: splits the command line, brings the toolkit up with InitSV, calls the
/// object's Main and takes the toolkit down with DeInitSV. An executable calls it once, from its WinMain; the static
/// library kivara_main holds such a WinMain. Nothing in the library calls it.
///
/// The words are released when it returns: destructors of static objects must not ask KivCmdline for them any more; its
/// flags stay.
///
/// The low-memory handler is there from the start in a program that links kivara_main. Elsewhere the program's own start
/// has malloc and new fail unasked, as ever: the entry has them ask from here on, but constructors of static objects run
/// before it, and a program that never comes here is not asked at all. It is asked like the others once it defines
/// \code
///   extern "C" { int _newmode = 1; } // read by the runtime's start
/// \endcode
///
/// Without an application object, and when InitSV fails, a box tells so; where an object's constructor has switched
/// dialog suppression on, the log of suppressed dialogs does.
/// \param instance     the executable's instance
/// \param previous     always null on this platform
/// \param commandLine  the command line without the program; the words are taken from the process's whole one instead
/// \param showCommand  how the system asks the first window to be shown
/// \return the exit code: 0 when Main returned, 1 when the process could not be brought up. A Main with another code
///         ends the process itself.
KIV_API int Kiv_ToolkitEntry(HINSTANCE__ * instance, HINSTANCE__ * previous, char * commandLine, int showCommand);

/// \name Printer switches
/// What the command line says about printers: words that the entry reads, beginning with '-' or '/', by their exact
/// text. They have the values for a line without such words until the entry has run.
/// @{

/// "registry-printers": printers are taken from the registry.
KIV_API bool Kiv_HasRegistryPrinters();
/// "case-sensitive-printers": names of printers differ by their case.
KIV_API bool Kiv_HasCaseSensitivePrinters();
/// True unless "legacy-printing" or "registry-printers" is given.
KIV_API bool Kiv_HasCurrentPrinting();
/// @}
