#include "kivara.hpp"

#include "sv/dialog.hpp"

void shows(SV::ModalDialog & dialog) {
  //[[1]]
}
