#include "kivara.hpp"

void durations() {
  //[[1]]
}
