#include "kivara.hpp"

void mixes() {
  //[[1]]
}
