#include "kivara.hpp"

namespace {

void restore() {}
void choose(unsigned short) { restore(); }

//[[1]]

void show(SV::Icon const & picture) {
  //[[2]]
}

} // namespace
