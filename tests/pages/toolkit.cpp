#include "kivara.hpp"

#include "sv/sv.hpp"

#include <cstdio>

void strings() {
  //[[1]]
}

void folders() {
  //[[2]]
}

//[[3]]

//[[4]]
