#include "kivara.hpp"

void atTheStart() {
  //[[1]]
}

void inTheReport(SV::String const & name) {
  //[[2]]
}
