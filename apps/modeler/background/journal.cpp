#include "background/journal.hpp"

using SV::String;

namespace modeler {

void Journal::Open() {
  String name = KivCmdline::Instance().getValue("journal");
  if (name.Len() == 0)
    name = Kiv_GetProgramPathFilename("modeler.log");
  logger_.open(name.c_str(), true);
}

void Journal::Close() { logger_.close(); }

void Journal::Add(String const & line) { logger_.addText("%s", line.c_str()); }

} // namespace modeler
