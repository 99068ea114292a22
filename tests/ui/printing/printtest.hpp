#pragma once
/// \file
/// What the tests of printing share.

#include "acmdline.hpp"
#include "aprint.hpp"
#include "support/servers/printing.hpp"

#include <string>
#include <vector>

namespace kivtest {

/// The process's printer is that queue: it is named on the command line.
inline void choosePrinter(std::string const & name) {
  static std::string option;
  static char program[] = "print_test";
  static char * words[3] = {program, nullptr, nullptr};
  option = "-P" + name;
  words[1] = option.data();
  KivCmdline::init(name.empty() ? 1 : 2, words, true, "log_print_test");
}

/// One job with these lines.
inline bool printLines(std::vector<std::string> const & lines) {
  TextPrinter printer("lines");
  if (!printer.Start())
    return false;
  for (std::string const & line : lines)
    printer.PrintLine(line.c_str());
  printer.End();
  return true;
}

} // namespace kivtest
