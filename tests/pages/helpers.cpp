#include "kivara.hpp"

void reads(double total, SV::String out) {
  //[[1]]
}
