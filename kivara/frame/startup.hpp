#pragma once
/// \file
/// Steps of the frame at the start and end of a program. A file that cannot be opened is ignored.

namespace kivara {

/// Opens the trace file that the command line names.
void openTraceFile();
void closeTraceFile();

/// Passes the suppression of dialogs and windows, and the log file for dialogs, to the toolkit.
void applySuppression();

/// Makes "agfx.zip" in the program's folder the archive of named pictures.
void registerPictures();

/// Writes the process id to the file that the command line names.
void writePidFile();

/// Stores the current working directory as the start directory.
void keepStartDirectory();

/// Sets the character set of the application font from the command line or, if that has none, from the language.
void applyCharSet();

/// Sets the labels of the standard buttons in the current language.
void applyButtonLabels();

} // namespace kivara
