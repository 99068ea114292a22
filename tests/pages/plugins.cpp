#include "kivara.hpp"

void show(SV::String const & name, SV::String const & file);
void show(void const * data, std::size_t size);
KivMemBuf countWords(KivInputData const & text);

void loads() {
  //[[1]]
}

void calls(KivInputData const & text) {
  //[[2]]
}

void extensions() {
  //[[3]]
}
