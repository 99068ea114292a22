#pragma once
/// \file
/// The log of what the user did.

#include "kivara.hpp"

namespace modeler {

/// A file of stamped lines: the one that "-journal" names, otherwise "modeler.log" in the program's folder. It is turned over
/// daily and seven old ones are kept. Where it cannot be written there is none.
class Journal {
public:
  Journal() : logger_(true, true, 7) {}

  void Open();
  void Close();
  void Add(SV::String const & line);

private:
  KivBasicFileLogger logger_;
};

} // namespace modeler
