#pragma once
/// \file
/// The toolkit entry: how a process gets from its WinMain to the application object.

#include "export.hpp"

struct HINSTANCE__;

/// Runs the process's application object: splits the command line, brings the toolkit up with InitSV, calls the
/// object's Main and takes the toolkit down with DeInitSV. An executable calls it once, from its WinMain; the static
/// library kivara_main holds such a WinMain. Nothing in the library calls it.
///
/// The words are released when it returns: after that, destructors of static objects must not ask KivCmdline for them. Its
/// flags stay valid.
///
/// The low-memory handler is active from the start in a program that links kivara_main. In any other the runtime's
/// start-up code switches it off, and the entry switches it on again: constructors of static objects run before that,
/// and a program that never calls the entry does without it, unless it defines
/// \code
///   extern "C" { int _newmode = 1; } // read by the start-up code
/// \endcode
///
/// Without an application object, and when InitSV fails, a box says so; if the constructor of an object has switched
/// dialog suppression on, the text goes to the log of suppressed dialogs instead.
/// \param instance     the executable's instance
/// \param previous     always null on this platform
/// \param commandLine  the command line without the program; the words are taken from the process's whole one instead
/// \param showCommand  how the system asks the first window to be shown
/// \return the exit code: 0 when Main returned, 1 when the process could not be brought up. A Main with another code
///         ends the process itself.
KIV_API int Kiv_ToolkitEntry(HINSTANCE__ * instance, HINSTANCE__ * previous, char * commandLine, int showCommand);

/// \name Printer switches
/// What the command line says about printers. The entry reads these words, which begin with '-' or '/' and must match
/// exactly. Until the entry has run, the values are those of a line without such words.
/// @{

/// "registry-printers": printers are taken from the registry; see SV::PrinterSwitches for the three.
KIV_API bool Kiv_HasRegistryPrinters();
/// "case-sensitive-printers": names of printers differ by their case.
KIV_API bool Kiv_HasCaseSensitivePrinters();
/// True unless "legacy-printing" or "registry-printers" is given.
KIV_API bool Kiv_HasCurrentPrinting();
/// @}
