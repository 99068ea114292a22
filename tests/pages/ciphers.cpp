#include "kivara.hpp"

int fail(int reason);

int hides() {
  //[[1]]
}
