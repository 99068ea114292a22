#include "kivara.hpp"

void aTemporaryFile() {
  //[[1]]
  //[[2]]
}
