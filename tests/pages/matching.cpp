#include "kivara.hpp"

void open();
void use(int start, int end);
void complain(SV::String const & message);

void matches() {
  //[[1]]
}

void compiles(char const * pattern) {
  //[[2]]
}
