#pragma once
/// \file
/// The steps of start-up and end that the frame takes by itself. Those that use a file pass over one that cannot be
/// opened.

namespace kivara {

/// Opens the trace file that the command line names.
void openTraceFile();
void closeTraceFile();

/// Tells the toolkit which dialogs and windows to suppress, and where to log the dialogs.
void applySuppression();

/// Makes "agfx.zip" beside the program the archive of named pictures.
void registerPictures();

/// Writes the process id to the file that the command line names.
void writePidFile();

/// Keeps the working directory of this moment as the start directory.
void keepStartDirectory();

/// Gives the application font the character set of the command line or, without one, of the language.
void applyCharSet();

/// Labels the standard buttons in the language.
void applyButtonLabels();

} // namespace kivara
