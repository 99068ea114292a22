#include "kivara.hpp"

#include "sv/menu.hpp"

#include <memory>

void use(SV::String const & line);
void readList(KivTextParser & parser);
int complain(unsigned long line);

void lines() {
  //[[1]]
}

int tokens() {
  //[[2]]
}

void looksAhead(KivTextParser & parser) {
  //[[3]]
}

void goesBack(KivTextParser & parser) {
  //[[4]]
}

void mnemonics(SV::Menu & menu) {
  //[[5]]
}

void aCachedText() {
  //[[6]]
}
