#include "kivara.hpp"

void askForTheDayFirst();

void facts() {
  //[[1]]
}
