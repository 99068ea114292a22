#include "kivara.hpp"

namespace {

void restore() {}

//[[1]]

void show(SV::Icon const & picture) {
  //[[2]]
}

} // namespace
