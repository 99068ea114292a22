#pragma once
/// \file
/// The words of a process's command line: splitting them, and the switches that the toolkit entry reads from them.

namespace kivara {

/// argc and argv in one block from malloc: the array of words with a null behind the last, then the characters.
/// free(words) releases all of it. When memory is lacking, words is null and count 0.
struct ArgumentBlock {
  int count = 0;
  char ** words = nullptr;
};

/// Splits a command line by the platform's rules.
///
/// Word 0 is the program: with a quote in front it ends at the next quote, otherwise at a blank or tab; backslashes
/// mean nothing in it, and it is there even when the line is empty. The other words end at a blank or tab outside of
/// quotes. In them, 2n backslashes before a quote give n and the quote counts; 2n+1 give n and a plain quote; other
/// backslashes stand for themselves. Two quotes in a row inside of quotes give a plain one and end the quoting.
/// \param line      the command line; null counts as the empty one
/// \param codePage  what its bytes are in: both bytes of a double-byte character stay together; 0 is the system's
ArgumentBlock splitCommandLine(char const * line, unsigned codePage = 0);

/// What the printing part asks about the command line.
struct PrinterSwitches {
  bool registryPrinters = false;
  bool caseSensitivePrinters = false;
  bool currentPrinting = true;
};

/// Reads the switches from the options among the words behind the program; other words are left alone.
PrinterSwitches readPrinterSwitches(int argc, char const * const * argv);

} // namespace kivara
