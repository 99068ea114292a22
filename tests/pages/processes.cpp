#include "kivara.hpp"

#include "tools/winapi.hpp"

int reportFailure(unsigned long error);
void showProgress();

int packs() {
  //[[1]]
}
