#include "kivara.hpp"

bool fail(unsigned long error);

bool loads() {
  //[[1]]
}

void sends(KivHTTPClient & client, unsigned char * data) {
  //[[2]]
}
