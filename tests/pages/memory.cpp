#include "kivara.hpp"

void paint(void * row);

void blocks(std::size_t width) {
  //[[1]]
}
