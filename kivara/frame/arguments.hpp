#pragma once
/// \file
/// The words of a process's command line: splitting them, and the switches that the toolkit entry reads from them.

#include "sv/printer.hpp"

namespace kivara {

/// argc and argv in one block from malloc: the array of words with a null after the last one, then the characters.
/// free(words) releases all of it. If there is no memory, words is null and count 0.
struct ArgumentBlock {
  int count = 0;
  char ** words = nullptr;
};

/// Splits a command line by the platform's rules.
///
/// Word 0 is the program: if it begins with a quote, it ends at the next quote, otherwise at a blank or tab. A backslash is an
/// ordinary character in it, and it exists even if the line is empty. The other words end at a blank or tab outside quotes.
/// In them, 2n backslashes before a quote become n, and the quote begins or ends the quoting; 2n+1 become n and a literal
/// quote; other backslashes are ordinary characters. Two quotes in a row inside quotes become a literal one and end the
/// quoting.
/// \param line      the command line; null counts as the empty one
/// \param codePage  of the line, so that both bytes of a double-byte character stay together; 0 is the system's
ArgumentBlock splitCommandLine(char const * line, unsigned codePage = 0);

/// Reads the switches for printers from the options among the words after the program; other words are ignored.
SV::PrinterSwitches readPrinterSwitches(int argc, char const * const * argv);

} // namespace kivara
