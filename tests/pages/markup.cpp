#include "kivara.hpp"

#include <fstream>

void warn(char const * message);

void writes(std::ostream & file, SV::String const & name) {
  //[[1]]
}

void readsAMap() {
  //[[2]]
}
