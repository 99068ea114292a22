#include "kivara.hpp"

#include "sv/window.hpp"

void traces(char const * name) {
  //[[1]]
}

void debugOutput() {
  //[[2]]
}

void internalError(SV::Window const * window) {
  //[[3]]
}

void assertions(int count, int id) {
  //[[4]]
}

void logs(int count) {
  //[[5]]
}

void messages(SV::Window const & window) {
  //[[6]]
}
